#pragma once

#include "nodes/values/Alignment.h"
#include "nodes/values/NFont.h"
#include "nodes/visual/BasicFramedWidget.h"

namespace Nodes {

/// An element that shows text: font, alignment and text colour beside background and frame.
class NODES_EXPORT BasicTextWidget : public BasicFramedWidget
{
public:
    NFont GetFont() const;
    enAlignmentHorizontal GetHorizontalAlignment() const
    {
        return enAlignmentHorizontal(m_horizontal);
    }
    enAlignmentVertical GetVerticalAlignment() const { return enAlignmentVertical(m_vertical); }
    NColor GetTextColor() const { return m_textColor; }

    /// Stands where a number would while there is none: long enough to be seen, never to be read
    /// as a value.
    static constexpr const char *NoValueText = "----";

protected:
    BasicTextWidget() = default;
    BasicTextWidget(NColor background, int borderWidth, enAlignmentHorizontal horizontal)
        : BasicFramedWidget(background, borderWidth), m_horizontal(horizontal)
    {
    }

    /// Adds font, alignment, text colour and frame only, for kinds with an order of their own.
    static void DescribeText(KindBuilder &builder);
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    std::string m_family = "DejaVu Sans";
    int m_pointSize = 11;
    bool m_isBold = false;
    bool m_isItalic = false;
    bool m_isUnderlined = false;
    bool m_isStruckOut = false;
    int m_horizontal = AlignmentLeft;
    int m_vertical = AlignmentVCenter;
    NColor m_textColor{32, 36, 40};
};

} // namespace Nodes
