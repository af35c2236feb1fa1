#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// Groups nodes of any family for the engineer's convenience; means nothing at run time.
class NODES_EXPORT BasicFolder : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeFolder;

    static KindInfo Kind();
};

} // namespace Nodes
