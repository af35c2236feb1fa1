#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/elements/BasicTextWidget.h"

namespace Nodes {

/// A text, fixed or of a live value.
class NODES_EXPORT widgetLabel : public BasicTextWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15001);
    struct Prop : BasicTextWidget::Prop, CaptionProp, AngleProp
    {
        static constexpr PropertyId<int> Decimals{12201, "decimals"};
        static constexpr PropertyId<bool> ShowUnit{12202, "showUnit"};
        static constexpr PropertyId<bool> Wrap{12234, "wrap"};
    };

    static KindInfo Kind();

    /// Below 0 for those of the signal.
    int GetDecimals() const { return m_decimals; }
    /// In place of 1 or 0; "" for none.
    const std::string &GetTextOf(bool value) const { return value ? m_onText : m_offText; }
    bool GetWordWrap() const { return m_isWrapped; }
    /// Degrees, clockwise, about the centre.
    double GetAngle() const { return m_angle; }

    /// The configured text without a signal. With one: prefix, value with the signal's (or this
    /// label's own) decimals, and the unit where shown; dashes for a bad value.
    using BasicWidget::GetDisplayText;
    std::string GetDisplayText(const SignalValue &value) const override;

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
    bool m_isWrapped = false;
    double m_angle = 0;
};

} // namespace Nodes
