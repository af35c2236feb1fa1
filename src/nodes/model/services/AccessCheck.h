#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/services/AccessDemand.h"
#include "nodes/values/Result.h"

#include <string>

namespace Nodes {

class ConfigNode;

/// Name of the user who acts there, for the journal; "" when nobody is logged in. Any thread.
NODES_EXPORT std::string UserNameFor(const ConfigNode &node);

/// Success when the current user may do that with the node; else AccessDenied. In a project that
/// nothing runs or that has no users everybody may. In one that is meant to have them, but whose
/// user subsystem is missing, misspelt or out of place, nobody may do more than look. Journals
/// nothing. Any thread.
[[nodiscard]] NODES_EXPORT Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node);

/// Whether, at run time, a rule forbids the current user to view the node. Roles that speak of
/// screens need not speak of the signals on them: without a rule nothing is forbidden. Any thread.
[[nodiscard]] NODES_EXPORT bool IsForbiddenToView(const ConfigNode &node);

/// The same as CheckAccess; a refusal is journalled with the user, `what` saying what was refused.
[[nodiscard]] NODES_EXPORT Result DemandAccess(enPrivilegeType privilege, const ConfigNode &node,
                                               const std::string &what);

/// What the user subsystem that guards the node says of controls for what it refuses: refuse each
/// attempt, disable or hide them. Refuse without users.
NODES_EXPORT enAccessDeniedAction AccessDeniedActionFor(const ConfigNode &node);
/// The same of the first demand that is refused; Refuse when nothing is.
NODES_EXPORT enAccessDeniedAction DenialOf(const AccessDemands &demands);

} // namespace Nodes
