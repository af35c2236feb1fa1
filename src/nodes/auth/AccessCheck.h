#pragma once

#include "nodes/NodesExport.h"
#include "nodes/auth/AuthPriv.h"
#include "nodes/values/Result.h"

namespace Nodes {

class ConfigNode;
class systemAuthentication;

/// User subsystem that guards the node: its station's, else the project's; null without any.
NODES_EXPORT const systemAuthentication *UsersFor(const ConfigNode &node);

/// Success when the current user may do that with the node, or when no user subsystem guards
/// it; else AccessDenied. Journals nothing. GUI thread.
[[nodiscard]] NODES_EXPORT Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node);

/// The same; a refusal is journalled with the user, `what` saying what was refused.
[[nodiscard]] NODES_EXPORT Result DemandAccess(enPrivilegeType privilege, const ConfigNode &node,
                                               const std::string &what);

} // namespace Nodes
