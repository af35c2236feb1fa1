#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/Alignment.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NFont.h"
#include "nodes/values/NPoint.h"

namespace Nodes {

/// Pops up an operator menu and gives it and its nested menus their look.
class NODES_EXPORT actionShowMenu : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1000c);
    struct Prop
    {
        static constexpr PropertyId<NodeLinks> Menus{16120, "menus"};
        static constexpr PropertyId<int> X{16121, "x"};
        static constexpr PropertyId<int> Y{16122, "y"};
        static constexpr PropertyId<bool> AtTrigger{16134, "atTrigger"};
        static constexpr PropertyId<NColor> MenuBackground{16123, "menuBackground"};
        static constexpr PropertyId<NColor> Background{16124, "background"};
        static constexpr PropertyId<NColor> HoverBackground{16125, "hoverBackground"};
        static constexpr PropertyId<NColor> BorderColor{16126, "borderColor"};
        static constexpr PropertyId<NColor> Color{16127, "color"};
        static constexpr PropertyId<int> BorderWidth{16128, "borderWidth"};
        static constexpr PropertyId<std::string> FontFamily{16129, "fontFamily"};
        static constexpr PropertyId<int> FontSize{16130, "fontSize"};
        static constexpr PropertyId<bool> Bold{16131, "bold"};
        static constexpr PropertyId<int> Align{16132, "align"};
        static constexpr PropertyId<int> Valign{16133, "valign"};
    };

    static KindInfo Kind();

    /// The first one is shown.
    const NodeLinks &GetMenus() const { return m_menus; }
    /// Top-left corner on the display where the action was triggered.
    NPoint GetPoint() const { return {m_x, m_y}; }

    /// Opens where the gesture was instead of at the point.
    bool isOpenedAtTrigger() const { return m_isAtTrigger; }
    NColor GetMenuBackgroundColor() const { return m_menuBackground; }
    NColor GetBackgroundColor() const { return m_background; }
    NColor GetHoverBackgroundColor() const { return m_hoverBackground; }
    NColor GetBorderColor() const { return m_borderColor; }
    NColor GetTextColor() const { return m_textColor; }
    int GetBorderWidth() const { return m_borderWidth; }
    NFont GetFont() const { return {m_family, m_pointSize, m_isBold}; }
    enAlignmentHorizontal GetHorizontalAlignment() const
    {
        return enAlignmentHorizontal(m_horizontal);
    }
    enAlignmentVertical GetVerticalAlignment() const { return enAlignmentVertical(m_vertical); }

    void Validate(ValidationResults &results) const override;

private:
    NodeLinks m_menus;
    int m_x = 0;
    int m_y = 0;
    bool m_isAtTrigger = false;
    NColor m_menuBackground{213, 217, 220};
    NColor m_background{238, 240, 242};
    NColor m_hoverBackground{180, 189, 196};
    NColor m_borderColor{120, 126, 132};
    NColor m_textColor{32, 38, 44};
    int m_borderWidth = 1;
    std::string m_family = "DejaVu Sans";
    int m_pointSize = 12;
    bool m_isBold = false;
    int m_horizontal = AlignmentLeft;
    int m_vertical = AlignmentVCenter;
};

} // namespace Nodes
