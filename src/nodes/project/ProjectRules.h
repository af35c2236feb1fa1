#pragma once

#include "nodes/model/validation/ProjectFinding.h"

#include <vector>

namespace Nodes {

class NodesCollection;

/// Something that no node can find out by itself.
struct ProjectRule
{
    const char *code; ///< see FindingCode
    bool isRemark;
    std::vector<ProjectFinding> (*find)(const NodesCollection &project);
};

/// All of them; a rule is a line here.
const std::vector<ProjectRule> &ProjectRules();

} // namespace Nodes
