#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// What an action gives for the template parameter of the same name.
class NODES_EXPORT templateArgument : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xF001);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Node{15001, "node"};
    };

    static KindInfo Kind();
    const NodeLink &GetLink() const { return m_node; }

private:
    NodeLink m_node;
};

} // namespace Nodes
