#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// What is kept of unsaved work, so that a crash loses little of it. A value; any thread.
struct RecoveryInfo
{
    std::string project; ///< the file that the work is saved to
    std::string name;    ///< of the project
    std::string base;    ///< digest of that file as it was last saved or opened
    Timestamp saved = 0;
    std::string file;   ///< of the unsaved work
    std::string damage; ///< Russian: why it cannot be read; "" when it can
    /// Of the write before that one, which is told here because the last one is damaged; "" else.
    std::string earlier;
};

/// Files of unsaved work, in a directory of the user's own. They are never the project's file, and
/// say what they hold: one that was cut off or spoilt is known as such.
namespace RecoveryFile {

/// Where this user's are kept by default.
NODES_EXPORT std::string DefaultDirectory();
/// For a project whose work is about to be kept: a name that no file has, so that older unsaved
/// work stays until somebody has decided about it.
NODES_EXPORT std::string FreeName(const std::string &directory, const std::string &project);

/// Replaces `info.file` as a whole.
[[nodiscard]] NODES_EXPORT Result Write(const RecoveryInfo &info, std::string_view text);
/// ParseError when the file is damaged.
[[nodiscard]] NODES_EXPORT Result Read(const std::string &file, RecoveryInfo &info,
                                       std::string &text);
/// Of a project, or of all for ""; the latest first, those that are damaged last.
NODES_EXPORT std::vector<RecoveryInfo> List(const std::string &directory,
                                            const std::string &project = {});
/// With what an earlier write has left beside it.
NODES_EXPORT void Remove(const std::string &file);

/// Makes a project file of unsaved work whose own project is gone, and removes it then. Duplicate
/// when there is such a file.
[[nodiscard]] NODES_EXPORT Result MoveTo(const RecoveryInfo &info, const std::string &projectFile);

/// Notes before a save that the project's file is going to have that HexDigest: once it has, the
/// unsaved work is saved, even when its editor is killed before it can remove this file. "" before
/// newer work is kept, which is in no save yet.
NODES_EXPORT void NoteSave(const std::string &file, const std::string &digest);
/// Removes unsaved work that was saved after all, and what killed writers have left.
NODES_EXPORT void Tidy(const std::string &directory);

} // namespace RecoveryFile

} // namespace Nodes
