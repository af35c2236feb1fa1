#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"

namespace Nodes {

/// An entry of an operator menu that runs actions. The node's name is its text.
class NODES_EXPORT BasicMenuItem : public ConfigNode
{
public:
    static KindInfo Kind();

    const NodeLinks &GetActions() const { return m_actions; }
    const ResourceLink &GetPicture() const { return m_picture; }

private:
    NodeLinks m_actions;
    ResourceLink m_picture;
};

} // namespace Nodes
