#pragma once

#include "nodes/NodesExport.h"
#include "nodes/auth/AuthPriv.h"
#include "nodes/values/Result.h"

namespace Nodes {

class ConfigNode;

/// Success when the current user may do that with the node, or when the node's station has no user
/// subsystem; else AccessDenied. Journals nothing. GUI thread.
[[nodiscard]] NODES_EXPORT Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node);

/// The same; a refusal is journalled with the user, `what` saying what was refused.
[[nodiscard]] NODES_EXPORT Result DemandAccess(enPrivilegeType privilege, const ConfigNode &node,
                                               const std::string &what);

} // namespace Nodes
