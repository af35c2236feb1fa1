#pragma once

#include "nodes/model/validation/ProjectFinding.h"

#include <vector>

namespace Nodes {

class NodesCollection;

/// Windows and compositions that nothing leads to: no frame shows them, and no action, menu or
/// other node outside of them that can be reached itself names them or what they hold.
std::vector<ProjectFinding> FindUnreachableWindows(const NodesCollection &project);
/// A project with windows and no frame that shows one.
std::vector<ProjectFinding> FindNothingShown(const NodesCollection &project);

} // namespace Nodes
