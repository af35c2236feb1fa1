#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <unordered_map>

namespace Nodes {

class ConfigNode;
class NodesCollection;

/// Nodes of a project by their paths, as they were when the first was asked for: for many
/// questions in a row while nothing changes. GUI thread.
class NODES_EXPORT NodePaths
{
public:
    /// Null: nothing is found.
    explicit NodePaths(const NodesCollection *project) : m_project(project) {}

    /// Null when no node has that path or when several have.
    ConfigNode *Find(const std::string &path) const;
    const NodesCollection *GetProject() const { return m_project; }

private:
    const NodesCollection *m_project;
    mutable bool m_isRead = false;
    mutable std::unordered_map<std::string, ConfigNode *> m_nodes;
};

} // namespace Nodes
