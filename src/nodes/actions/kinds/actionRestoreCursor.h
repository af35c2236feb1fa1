#pragma once

#include "nodes/actions/BasicAction.h"

namespace Nodes {

/// Takes back the latest pointer that an actionOverrideCursor gave.
class NODES_EXPORT actionRestoreCursor : public BasicAction
{
public:
    static KindInfo Kind();
};

} // namespace Nodes
