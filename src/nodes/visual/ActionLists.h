#pragma once

#include "nodes/model/links/NodeLink.h"

namespace Nodes {

/// The five gesture lists that windows and elements carry alike, as the node holds them: asked for
/// with every move of the pointer, so nothing is copied. Not to be kept.
struct ActionLists
{
    const NodeLinks &onPress;
    const NodeLinks &onRelease;
    const NodeLinks &onEnter;
    const NodeLinks &onMove;
    const NodeLinks &onLeave;
};

} // namespace Nodes
