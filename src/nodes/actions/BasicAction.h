#pragma once

#include "nodes/actions/IAction.h"
#include "nodes/model/ConfigNode.h"

namespace Nodes {

/// Configuration of one operator action. What runs is a detached copy of the node, so run-time
/// state never touches the project.
class NODES_EXPORT BasicAction : public ConfigNode, public IAction
{
};

} // namespace Nodes
