#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// A top-level container placed on one display, showing the windows it lists.
class NODES_EXPORT BasicFrame : public ConfigNode
{
public:
    enum enBorderType { BorderNone = 1, BorderDecorated = 2 };

    static KindInfo Kind();

    /// 1-based number of the display; numbers without a display leave the frame where it is.
    int GetDisplayNo() const { return m_displayNo; }
    enBorderType GetBorderType() const { return enBorderType(m_borderType); }
    /// Windows shown in the frame, in order.
    const NodeLinks &GetWindows() const { return m_windows; }

private:
    int m_displayNo = 1;
    int m_borderType = BorderNone;
    NodeLinks m_windows;
};

} // namespace Nodes
