#pragma once

#include "nodes/actions/BasicAction.h"

namespace Nodes {

/// Takes back the latest pointer that an actionOverrideCursor gave.
class NODES_EXPORT actionRestoreCursor : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10011);

    static KindInfo Kind();
};

} // namespace Nodes
