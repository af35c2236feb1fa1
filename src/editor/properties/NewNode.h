#pragma once

#include "nodes/model/NodeType.h"
#include "nodes/model/links/NodeLink.h"

namespace Editor {

/// A node of the kind with a name that is free below `parent`, held by the project for a command to
/// add it there; its link is empty when the kind is unknown. What it needs to know of `parent`, as
/// a limit the range of its signal, it has taken from there. GUI thread.
Nodes::NodeLink makeClone(Nodes::NodeType type, const Nodes::ConfigNode &parent);

} // namespace Editor
