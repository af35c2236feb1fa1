#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"
#include "nodes/visual/SharedProperties.h"

namespace Nodes {

class BasicSignal;
class widgetChartAxis;

/// A range of values that a chart shades, such as the permitted one. Its limits are numbers or live
/// in signals: then they follow these and can be dragged by whoever may write them.
class NODES_EXPORT widgetChartZone : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xC006);
    struct Prop
    {
        static constexpr PropertyId<double> Lower{12391, "lower"};
        static constexpr PropertyId<double> Upper{12392, "upper"};
        static constexpr PropertyId<NodeLink> LowerSignal{12393, "lowerSignal"};
        static constexpr PropertyId<NodeLink> UpperSignal{12394, "upperSignal"};
        static constexpr PropertyId<bool> Editable{12395, "editable"};
        static constexpr PropertyId<NodeLink> Axis{12396, "axis"};
        static constexpr PropertyId<NColor> Color = TextProp::Color;
        static constexpr PropertyId<std::string> Text = CaptionProp::Text;
    };

    static KindInfo Kind();

    /// Fixed limits, in force where no signal is linked; infinite ones leave that side open.
    double GetLower() const { return m_lower; }
    double GetUpper() const { return m_upper; }
    BasicSignal *GetLowerSignal() const;
    BasicSignal *GetUpperSignal() const;
    NColor GetColor() const { return m_color; }
    const std::string &GetText() const { return m_text; }
    /// Limits in signals may be dragged, as far as the user's rights go.
    bool IsEditable() const { return m_isEditable; }
    /// Null: the first Y axis of the group.
    widgetChartAxis *GetAxis() const;

    void Validate(ValidationResults &results) const override;

private:
    double m_lower = 0;
    double m_upper = 100;
    NodeLink m_lowerSignal;
    NodeLink m_upperSignal;
    NColor m_color{150, 160, 168, 60};
    std::string m_text;
    bool m_isEditable = true;
    NodeLink m_axis;
};

} // namespace Nodes
