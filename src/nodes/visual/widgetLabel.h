#pragma once

#include "nodes/values/Alignment.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NFont.h"
#include "nodes/visual/BasicWidget.h"

namespace Nodes {

/// A text, fixed or of a live value.
class NODES_EXPORT widgetLabel : public BasicWidget
{
public:
    static KindInfo Kind();

    NFont GetFont() const;
    enAlignmentHorizontal GetHorizontalAlignment() const
    {
        return enAlignmentHorizontal(m_horizontal);
    }
    enAlignmentVertical GetVerticalAlignment() const { return enAlignmentVertical(m_vertical); }
    NColor GetTextColor() const { return m_textColor; }
    NColor GetBackgroundColor() const { return m_backgroundColor; }
    NColor GetBorderColor() const { return m_borderColor; }
    int GetBorderWidth() const { return m_borderWidth; }
    bool GetWordWrap() const { return m_isWrapped; }
    /// Degrees, clockwise, about the centre.
    double GetAngle() const { return m_angle; }

    /// The configured text without a signal. With one: prefix, value with the signal's (or this
    /// label's own) decimals, and the unit where shown; dashes for a bad value.
    std::string GetDisplayText() const override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

    std::string formatValue(const SignalValue &value) const;

private:
    std::string m_text;
    int m_decimals = -1;
    bool m_showsUnit = true;
    std::string m_onText;
    std::string m_offText;
    std::string m_family = "DejaVu Sans";
    int m_pointSize = 11;
    bool m_isBold = false;
    bool m_isItalic = false;
    bool m_isUnderlined = false;
    bool m_isStruckOut = false;
    int m_horizontal = AlignmentLeft;
    int m_vertical = AlignmentVCenter;
    NColor m_textColor{32, 36, 40};
    NColor m_backgroundColor{0, 0, 0, 0};
    NColor m_borderColor{120, 126, 132};
    int m_borderWidth = 0;
    bool m_isWrapped = false;
    double m_angle = 0;
};

} // namespace Nodes
