#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace Nodes {

class ConfigNode;

/// Names for many nodes that enter one parent one after the other. What FreeName answers, but the
/// names of the children present are read once, not for each of the nodes. GUI thread.
class NODES_EXPORT FreeNames
{
public:
    /// The parent outlives it. `first` is the least number given, positive.
    FreeNames(const ConfigNode &parent, int first) : m_parent(parent), m_first(first) {}

    /// The wanted name, or with a space and the least number that no child has and that was not
    /// given before. The node is expected to be added next.
    std::string take(const std::string &wanted);

private:
    void read();

    const ConfigNode &m_parent;
    int m_first;
    int m_count = -1; // of the parent's children when all that were named have entered
    std::unordered_set<std::string> m_taken;
    std::unordered_map<std::string, int> m_next; // no number below is free behind that name
};

} // namespace Nodes
