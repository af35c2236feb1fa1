#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// One layer of a composition: a stack of elements with a z-order of its own.
class NODES_EXPORT BasicLayer : public ConfigNode
{
public:
    enum enMode { ModeOpaque = 1, ModeTransparent = 2 };

    static KindInfo Kind();

    int GetZOrder() const { return m_zOrder; }
    bool isVisible() const { return m_isVisible; }
    /// Transparent layers let elements below be picked in the editor.
    enMode GetMode() const { return enMode(m_mode); }
    /// Links of the layer's elements, in order.
    NodesArray GetWidgets() const;

private:
    int m_mode = ModeOpaque;
    int m_zOrder = 0;
    bool m_isVisible = true;
};

} // namespace Nodes
