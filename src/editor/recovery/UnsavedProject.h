#pragma once

#include "nodes/values/Result.h"

#include <memory>

namespace Nodes {
class NodesCollection;
struct RecoveryInfo;
} // namespace Nodes

namespace Editor {

/// Reads unsaved work, the last of it that is whole; `project` is untouched on failure. Any thread.
[[nodiscard]] Nodes::Result ReadUnsaved(const Nodes::RecoveryInfo &info,
                                        std::unique_ptr<Nodes::NodesCollection> &project);

/// Whether the file that the work is to be saved to is of another project by now: then it is no
/// work on that one, and saving it there would lose what stands there. False when either of them
/// cannot be read. Any thread.
bool IsReplaced(const Nodes::RecoveryInfo &info);

} // namespace Editor
