#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/project/NodeDifference.h"
#include "nodes/project/NodePairs.h"

#include <unordered_set>
#include <vector>

namespace Nodes {

struct PropertyDescriptor;

/// Makes the differences of two projects. Once.
class DiffBuilder
{
public:
    DiffBuilder(const NodesCollection &before, const NodesCollection &after);

    std::vector<NodeDifference> Build();

private:
    void walkAfter(const ConfigNode &after);
    void walkBefore(const ConfigNode &before);
    void noteOrder(const ConfigNode &before, const ConfigNode &after);
    void compare(const ConfigNode &before, const ConfigNode &after);
    void compareTexts(const ConfigNode &before, const ConfigNode &after, NodeDifference &found);
    void compareForeign(const ConfigNode &before, const ConfigNode &after, NodeDifference &found);
    bool isEqual(const PropertyDescriptor &d, const ConfigNode &before,
                 const ConfigNode &after) const;
    bool isEqual(const NodeLink &before, const NodeLink &after) const;
    std::size_t countAdded(const ConfigNode &after) const;
    std::size_t countRemoved(const ConfigNode &before) const;

    const NodesCollection &m_before;
    const NodesCollection &m_after;
    NodePairs m_pairs;
    std::unordered_set<const ConfigNode *> m_reordered; // of the second project
    std::vector<NodeDifference> m_found;
};

} // namespace Nodes
