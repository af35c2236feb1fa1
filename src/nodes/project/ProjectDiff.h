#pragma once

#include "nodes/NodesExport.h"
#include "nodes/project/NodeDifference.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Nodes {

class NodesCollection;

/// Compares two versions of a project, node by node. Nodes are the same that have the same id and
/// kind; of the rest those of the same path and kind, so that a project drawn anew compares as
/// well. What the projects look like does not matter: order of attributes, default values,
/// comments. A value: it outlives both projects.
class NODES_EXPORT ProjectDiff
{
public:
    /// On the thread that owns both.
    ProjectDiff(const NodesCollection &before, const NodesCollection &after);

    bool isEmpty() const { return m_differences.empty(); }
    /// What is in the second project in its order, then what is removed in the order of the first.
    const std::vector<NodeDifference> &GetDifferences() const { return m_differences; }

    /// Russian, in a few words: "добавлено 3, удалено 1, изменено 2"; "различий нет".
    std::string GetSummary() const;

private:
    std::vector<NodeDifference> m_differences;
};

} // namespace Nodes
