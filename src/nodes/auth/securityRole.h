#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// What those who have this role may do: its children are the grants.
class NODES_EXPORT securityRole : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x20001);

    static KindInfo Kind();
};

} // namespace Nodes
