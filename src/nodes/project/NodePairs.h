#pragma once

#include "nodes/NodesExport.h"

#include <unordered_map>
#include <vector>

namespace Nodes {

class ConfigNode;
class NodesCollection;

/// Which node of one project is which of another. Both outlive the pairs.
class NODES_EXPORT NodePairs
{
public:
    NodePairs(const NodesCollection &before, const NodesCollection &after);

    /// Null for a node that the other project does not have.
    const ConfigNode *GetAfter(const ConfigNode &before) const;
    const ConfigNode *GetBefore(const ConfigNode &after) const;

private:
    void pair(const ConfigNode &before, const ConfigNode &after);
    void pairById(const ConfigNode &before, const NodesCollection &after);
    void pairByName(const ConfigNode &before, const ConfigNode &after);

    std::unordered_map<const ConfigNode *, const ConfigNode *> m_after;
    std::unordered_map<const ConfigNode *, const ConfigNode *> m_before;
};

} // namespace Nodes
