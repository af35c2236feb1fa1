#pragma once

#include <string>

namespace Nodes {

class ConfigNode;

/// Something wrong with a project as a whole, found when it is read.
struct ProjectFinding
{
    const ConfigNode *node; ///< where to mend it
    std::string text;       ///< Russian: what is wrong, what follows from it and what to do
};

} // namespace Nodes
