#pragma once

#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/elements/TextProperties.h"

namespace Nodes {

/// A push button that runs its own action lists when it is pressed and released.
class NODES_EXPORT widgetButton : public TextProperties<BasicWidget>
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15003);
    struct Prop : TextProperties::Prop, CaptionProp, AngleProp, BackgroundProp, PictureProp
    {
        static constexpr PropertyId<int> Style{12260, "style"};
        static constexpr PropertyId<std::string> HotKey{12261, "hotKey"};
        static constexpr PropertyId<NodeLinks> PressActions{12262, "pressActions"};
        static constexpr PropertyId<NodeLinks> ReleaseActions{12263, "releaseActions"};
    };

    enum enStyle {
        StyleApplication = 1,
        StyleWindows = 2,
        StyleWindowsXP = 3,
        StyleWindowsVista = 4,
        StyleMacintosh = 5,
        StyleFusion = 6,
        StyleTransparent = 7 ///< of the application, without a background
    };

    widgetButton();
    static KindInfo Kind();

    int GetStyle() const { return m_style; }
    NColor GetBackgroundColor() const { return m_backgroundColor; }
    const ResourceLink &GetImage() const { return m_image; }
    /// Shortcut in the portable form, such as "Ctrl+F5"; "" for none.
    const std::string &GetHotKey() const { return m_hotKey; }
    /// In place of 1 or 0; "" for none.
    const std::string &GetTextOf(bool value) const { return value ? m_onText : m_offText; }
    /// Degrees, clockwise, about the centre.
    double GetAngle() const { return m_angle; }
    /// Run in this order when the button goes down and up, by pointer, touch or key; the gesture
    /// lists of the base follow the pointer alone.
    const NodeLinks &GetPressActions() const { return m_pressActions; }
    const NodeLinks &GetReleaseActions() const { return m_releaseActions; }

    /// With a signal of yes/no type the text configured for its value, else the button's own text;
    /// without either the value with its unit, dashes for a bad one.
    using BasicWidget::GetDisplayText;
    std::string GetDisplayText(const SignalValue &value) const override;
    void CollectDemands(AccessDemands &demands) const override;

private:
    int m_style = StyleApplication;
    std::string m_text;
    std::string m_onText;
    std::string m_offText;
    NColor m_backgroundColor{226, 229, 232};
    ResourceLink m_image;
    std::string m_hotKey;
    double m_angle = 0;
    NodeLinks m_pressActions;
    NodeLinks m_releaseActions;
};

} // namespace Nodes
