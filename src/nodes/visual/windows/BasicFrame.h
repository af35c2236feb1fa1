#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// A top-level container placed on one display, showing the windows it lists.
class NODES_EXPORT BasicFrame : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x11001);
    struct Prop
    {
        static constexpr PropertyId<int> Display{17001, "display"};
        static constexpr PropertyId<int> Border{17002, "border"};
        static constexpr PropertyId<NodeLinks> Windows{17003, "windows"};
        static constexpr PropertyId<int> Fit{17004, "fit"};
    };

    enum enBorderType { BorderNone = 1, BorderDecorated = 2 };

    /// How what was drawn for one size of display is shown on another: one unit a pixel; scaled as
    /// a whole and centred; each axis stretched by itself.
    enum enFit { FitAsDrawn = 0, FitInside = 1, FitFill = 2 };

    static KindInfo Kind();

    /// 1-based number of the display; a frame without its display shows on the primary one.
    int GetDisplayNo() const { return m_displayNo; }
    enBorderType GetBorderType() const { return enBorderType(m_borderType); }
    enFit GetFit() const { return enFit(m_fit); }
    /// Windows shown in the frame, in order.
    const NodeLinks &GetWindows() const { return m_windows; }

private:
    int m_displayNo = 1;
    int m_borderType = BorderNone;
    int m_fit = FitAsDrawn;
    NodeLinks m_windows;
};

} // namespace Nodes
