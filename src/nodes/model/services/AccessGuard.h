#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/services/AuthPriv.h"

#include <string>

namespace Nodes {

class ConfigNode;

/// Who may do what with the nodes of a project, and who acts there. Asked through AccessCheck.h;
/// implemented by the running system. Any thread.
class NODES_EXPORT AccessGuard
{
public:
    virtual ~AccessGuard() = default;

    /// Whether the current user may do that with the node.
    virtual bool Allows(enPrivilegeType privilege, const ConfigNode &node) const = 0;
    /// Whether a rule forbids the current user to view the node; no rule, no.
    virtual bool ForbidsToView(const ConfigNode &node) const = 0;
    /// Name of who acts there, for the journal; "" for nobody.
    virtual std::string GetUserName(const ConfigNode &node) const = 0;
    /// What becomes of controls for something that the node refuses.
    virtual enAccessDeniedAction GetAccessDeniedAction(const ConfigNode &node) const = 0;
};

} // namespace Nodes
