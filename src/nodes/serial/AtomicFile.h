#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <string>
#include <string_view>

namespace Nodes {

/// Replaces a file so that a crash or a full disk leaves either the old or the new content: writes
/// a temporary file beside it, syncs, renames, syncs the directory. A previous file stays as
/// "<path>.bak" and passes its permissions on. A symbolic link keeps pointing at the file.
[[nodiscard]] NODES_EXPORT Result ReplaceFile(const std::string &path, std::string_view bytes);

/// Removes what writers of that file have left beside it that were killed; what one that is at work
/// writes now stays. False when there is such a writer.
NODES_EXPORT bool RemoveLeftovers(const std::string &path);

} // namespace Nodes
