#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"

namespace Nodes {

/// Settings of everything on screen that belongs to no single window.
class NODES_EXPORT systemVisualization : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x7001);
    struct Prop
    {
        static constexpr PropertyId<int> TitleHeight{7101, "titleHeight"};
        static constexpr PropertyId<NColor> OverlayColor{7102, "overlayColor"};
        static constexpr PropertyId<int> IdleLogout{7103, "idleLogout"};
    };

    static KindInfo Kind();

    /// Height of decorated windows' title bars, pixels.
    int GetTitleHeight() const { return m_titleHeight; }
    /// Colour that dims every other frame while a modal window is up.
    NColor GetOverlayColor() const { return m_overlayColor; }
    /// Quiet time after which an operator is logged out, seconds; 0 never.
    int GetIdleLogout() const { return m_idleLogout; }

private:
    int m_titleHeight = 25;
    NColor m_overlayColor{0, 0, 0, 128};
    int m_idleLogout = 0;
};

} // namespace Nodes
