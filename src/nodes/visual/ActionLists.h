#pragma once

#include "nodes/model/NodeLink.h"

namespace Nodes {

/// The five gesture lists that windows and elements carry alike.
struct ActionLists
{
    NodeLinks onPress;
    NodeLinks onRelease;
    NodeLinks onEnter;
    NodeLinks onMove;
    NodeLinks onLeave;
};

} // namespace Nodes
