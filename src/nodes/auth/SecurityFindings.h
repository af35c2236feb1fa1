#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/validation/ProjectFinding.h"

#include <vector>

namespace Nodes {

class ConfigNode;
class NodesCollection;

/// True for what shows that a project is meant to have users: users, roles and rules wherever they
/// stand, a user subsystem in a place where it does not work, and elements of an unknown kind that
/// look like a misspelling of these or contain them.
NODES_EXPORT bool SpeaksOfUsers(const ConfigNode &node);
/// Whether any node of the project does. Walks the whole tree; on the thread that owns it.
NODES_EXPORT bool SpeaksOfUsers(const NodesCollection &project);

/// What keeps the users of the project from working; empty when all is well or when there are no
/// users at all. On the thread that owns the tree.
NODES_EXPORT std::vector<ProjectFinding> FindSecurityGaps(const NodesCollection &project);

} // namespace Nodes
