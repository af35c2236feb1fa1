#pragma once

#include "nodes/project/ProjectProblem.h"

#include <vector>

namespace Nodes {
class NodesCollection;
}

namespace Editor {

/// What a review finds on all screens of a project, as remarks of its check. Texts are measured,
/// nothing is built or shown: how fast screens come up is left out, and so are hints.
class ScreenProblems
{
public:
    /// Without lines. The code is "screen." and the rule. GUI thread of a QGuiApplication.
    static std::vector<Nodes::ProjectProblem> of(const Nodes::NodesCollection &project);
};

} // namespace Editor
