#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// An entry of an operator menu that runs actions. The node's name is its text.
class NODES_EXPORT BasicMenuItem : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xB002);
    struct Prop
    {
        static constexpr PropertyId<NodeLinks> Actions{21010, "actions"};
        static constexpr PropertyId<ResourceLink> Picture{21011, "picture"};
    };

    static KindInfo Kind();

    const NodeLinks &GetActions() const { return m_actions; }
    const ResourceLink &GetPicture() const { return m_picture; }

private:
    NodeLinks m_actions;
    ResourceLink m_picture;
};

} // namespace Nodes
