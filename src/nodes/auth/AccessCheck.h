#pragma once

#include "nodes/NodesExport.h"
#include "nodes/auth/AccessDemand.h"
#include "nodes/values/Result.h"

namespace Nodes {

class ConfigNode;
class systemAuthentication;

/// User subsystem that guards the node: its station's, else the project's; null without any. Null
/// does not mean that everything is allowed: see CheckAccess.
NODES_EXPORT const systemAuthentication *UsersFor(const ConfigNode &node);

/// Name of the user logged in there, for the journal; "" when nobody is. Any thread.
NODES_EXPORT std::string UserNameFor(const ConfigNode &node);

/// Success when the current user may do that with the node; else AccessDenied. In a project that
/// has no users everybody may. In one that is meant to have them, but whose user subsystem is
/// missing, misspelt or out of place, nobody may do more than look. Journals nothing. Any thread.
[[nodiscard]] NODES_EXPORT Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node);

/// Whether, at run time, a rule forbids the current user to view the node. Roles that speak of
/// screens need not speak of the signals on them: without a rule nothing is forbidden. Any thread.
[[nodiscard]] NODES_EXPORT bool IsForbiddenToView(const ConfigNode &node);

/// The same as CheckAccess; a refusal is journalled with the user, `what` saying what was refused.
[[nodiscard]] NODES_EXPORT Result DemandAccess(enPrivilegeType privilege, const ConfigNode &node,
                                               const std::string &what);

/// Appends the demands of the actions of a list; dead links demand nothing. GUI thread.
NODES_EXPORT void AppendDemands(const NodeLinks &actions, AccessDemands &demands);
/// What to do with a control that demands this and that the current user is not allowed to use:
/// refuse each attempt, or what the user subsystem of the node that refuses says. Refuse when
/// nothing is refused.
NODES_EXPORT enAccessDeniedAction DenialOf(const AccessDemands &demands);

} // namespace Nodes
