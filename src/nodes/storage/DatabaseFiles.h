#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

class DatabaseCopy;

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
    /// Only those whose paths begin so, and with none of `others`.
    void Narrow(std::string beginning, std::vector<std::string> others = {})
    {
        m_beginning = std::move(beginning);
        m_others = std::move(others);
    }
    /// Sorted by path. Files that vanish meanwhile are left out.
    std::vector<File> List() const;
    /// The same without a look at who uses them, which takes a while.
    std::vector<std::string> ListPaths() const;
    /// Deletes a file with its write-ahead log. Refused while any process that this user may look
    /// into has it open; InvalidArgument for a path that leads out of the directory or is no
    /// database; StorageError names the cause.
    [[nodiscard]] Result Delete(const std::string &path) const;
    /// A copy to be run, on a thread of its own; errors as of Delete, but files in use may be
    /// copied.
    [[nodiscard]] Result MakeCopy(const std::string &path, const std::string &target,
                                  std::unique_ptr<DatabaseCopy> &copy) const;

private:
    bool isListed(const std::string &path) const;
    Result resolve(const std::string &path, std::string &full) const;

    std::string m_directory;
    std::string m_beginning;
    std::vector<std::string> m_others;
};

} // namespace Nodes
