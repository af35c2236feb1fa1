#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// One layer of a composition: a stack of elements with a z-order of its own.
class NODES_EXPORT BasicLayer : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeLayer;
    struct Prop
    {
        static constexpr PropertyId<int> Mode{13001, "mode"};
        static constexpr PropertyId<int> ZOrder{13002, "zOrder"};
        static constexpr PropertyId<bool> Visible{13003, "visible"};
    };

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
