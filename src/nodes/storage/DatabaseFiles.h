#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

namespace Nodes {

/// The database files below one directory: what an engineer may copy and clean up. A value; any
/// thread.
class NODES_EXPORT DatabaseFiles
{
public:
    struct File
    {
        std::string path;       ///< relative to the directory, '/' separated
        std::uint64_t size = 0; ///< bytes, the write-ahead log included
        Timestamp changed = 0;  ///< last modification, UTC
        bool isInUse = false;   ///< some process, this one or another, has it open
    };

    /// "" as directory holds no files.
    explicit DatabaseFiles(std::string directory) : m_directory(std::move(directory)) {}

    const std::string &GetDirectory() const { return m_directory; }
    /// Sorted by path. Files that vanish meanwhile are left out.
    std::vector<File> List() const;
    /// Deletes a file with its write-ahead log. Refused while any process that this user may look
    /// into has it open; InvalidArgument for a path that leads out of the directory or is no
    /// database; StorageError names the cause.
    [[nodiscard]] Result Delete(const std::string &path) const;
    /// Writes a consistent copy to `target`, also of a file in use; Duplicate when `target` exists.
    /// A damaged file is copied as it is, unless it is in use. May take long; setting `isCancelled`
    /// ends it with Cancelled. What was written is removed after a failure.
    [[nodiscard]] Result Copy(const std::string &path, const std::string &target,
                              const std::atomic<bool> &isCancelled) const;

private:
    Result resolve(const std::string &path, std::string &full) const;

    std::string m_directory;
};

} // namespace Nodes
