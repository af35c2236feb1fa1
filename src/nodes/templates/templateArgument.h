#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// What an action gives for the template parameter of the same name.
class NODES_EXPORT templateArgument : public ConfigNode
{
public:
    static KindInfo Kind();
    const NodeLink &GetLink() const { return m_node; }

private:
    NodeLink m_node;
};

} // namespace Nodes
