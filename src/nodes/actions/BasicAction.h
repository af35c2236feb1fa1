#pragma once

#include "nodes/actions/IAction.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/services/AccessDemand.h"

namespace Nodes {

/// Configuration of one operator action. What runs is a detached copy of the node, so run-time
/// state never touches the project.
class NODES_EXPORT BasicAction : public ConfigNode, public IAction
{
public:
    /// Appends what the current user must be allowed to do for this action to succeed, so that what
    /// triggers it can show beforehand that it will be refused; by default nothing. The action
    /// checks it again when it runs. GUI thread.
    virtual void CollectDemands(AccessDemands &demands) const;
    /// Appends the demands of the actions of a list; dead links demand nothing. GUI thread.
    static void AppendDemands(const NodeLinks &actions, AccessDemands &demands);
};

} // namespace Nodes
