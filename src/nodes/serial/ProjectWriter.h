#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <string>

namespace Nodes {

class NodesCollection;

/// Writes a project as its file. The same project always gives the same text, one element a line,
/// so that versions compare well. GUI thread, or the thread that built the project.
class NODES_EXPORT ProjectWriter
{
public:
    /// Text of the file; "" for a project without a root.
    static std::string ToText(const NodesCollection &project);
    /// Replaces the file at once or not at all; the previous version stays as "<path>.bak".
    /// StorageError names the step and the reason, LimitExceeded what no reader would take,
    /// ReadOnly a project that was read from a newer format; the old file is then untouched.
    [[nodiscard]] static Result WriteFile(const NodesCollection &project, const std::string &path);
};

} // namespace Nodes
