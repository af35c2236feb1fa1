#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// What those who have this role may do: its children are the grants.
class NODES_EXPORT securityRole : public ConfigNode
{
public:
    static KindInfo Kind();
};

} // namespace Nodes
