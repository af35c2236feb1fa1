#pragma once

#include "nodes/values/Alignment.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NFont.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/elements/BasicFramedWidget.h"

#include <utility>

namespace Nodes {

/// Font, alignment and text colour for the elements that show text, whatever else their base has.
template <class Base> class NODES_EXPORT TextProperties : public Base
{
public:
    struct Prop : Base::Prop, TextProp
    {
    };

    NFont GetFont() const
    {
        return {m_family, m_pointSize, m_isBold, m_isItalic, m_isUnderlined, m_isStruckOut};
    }
    enAlignmentHorizontal GetHorizontalAlignment() const
    {
        return enAlignmentHorizontal(m_horizontal);
    }
    enAlignmentVertical GetVerticalAlignment() const { return enAlignmentVertical(m_vertical); }
    NColor GetTextColor() const { return m_textColor; }

protected:
    TextProperties() = default;
    template <class... Arguments>
    explicit TextProperties(enAlignmentHorizontal horizontal, Arguments &&...arguments)
        : Base(std::forward<Arguments>(arguments)...), m_horizontal(horizontal)
    {
    }

    /// For constructors of kinds whose text stands elsewhere by nature.
    void SetVerticalAlignment(enAlignmentVertical vertical) { m_vertical = vertical; }

    /// Adds font, alignment and text colour only, for kinds with an order of their own.
    static void DescribeText(KindBuilder &builder);

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

extern template class TextProperties<BasicWidget>;
extern template class TextProperties<BasicFramedWidget>;

} // namespace Nodes
