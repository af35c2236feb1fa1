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
    /// Text of the file, or why `path` may not be replaced: LimitExceeded tells what no reader
    /// would take, ReadOnly a project that was read from a newer format.
    [[nodiscard]] static Result MakeText(const NodesCollection &project, const std::string &path,
                                         std::string &text);
    /// Replaces the file at once or not at all; the previous version stays as "<path>.bak".
    /// StorageError names the step and the reason, others are those of MakeText; the old file is
    /// then untouched.
    [[nodiscard]] static Result WriteFile(const NodesCollection &project, const std::string &path);
};

} // namespace Nodes
