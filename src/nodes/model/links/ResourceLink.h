#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/ResourcePtr.h"

#include <string>

namespace Nodes {

class BasicNode;

/// Reference to a file of the project (picture, sound, template), relative to its directory.
class NODES_EXPORT ResourceLink
{
public:
    ResourceLink() = default;
    explicit ResourceLink(std::string filePath) : m_filePath(std::move(filePath)) {}

    /// As configured: relative, '/' separated; "" when none is set.
    const std::string &GetFilePath() const { return m_filePath; }
    /// Part of the programs rather than a file of the project: ":/" and a name.
    bool IsBuiltIn() const { return m_filePath.compare(0, 2, ":/") == 0; }
    /// Resolved against the project's directory; "" when none is set or when the path, or a
    /// symbolic link on it, leaves that directory, which projects may not ask for.
    std::string GetFullFilePath() const;
    /// The file's bytes, shared with every other holder of the same file while any is alive and
    /// the file is unchanged. Empty pointer when the file is missing, unreadable or over 64 MiB.
    ResourcePtr Load() const;

    bool operator==(const ResourceLink &other) const { return m_filePath == other.m_filePath; }
    bool operator!=(const ResourceLink &other) const { return !(*this == other); }

    /// Directory that relative paths are resolved against; set by the core when a project is
    /// loaded. GUI thread.
    static void SetBaseDirectory(const std::string &directory);
    static std::string GetBaseDirectory();

private:
    std::string m_filePath;
};

} // namespace Nodes
