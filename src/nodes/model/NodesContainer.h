#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/NodesArray.h"

namespace Nodes {

/// Set of node links in ascending order of id: what is copied, pasted and serialised as a whole.
class NODES_EXPORT NodesContainer
{
public:
    NodesContainer() = default;
    explicit NodesContainer(const NodesArray &nodes);

    /// False when the link is empty or already contained.
    bool Add(const NodeLink &link);
    bool Contains(const NodeLink &link) const;
    std::size_t size() const { return m_links.size(); }
    bool empty() const { return m_links.empty(); }
    const NodeLinks &GetLinks() const { return m_links; }
    NodeLinks::const_iterator begin() const { return m_links.begin(); }
    NodeLinks::const_iterator end() const { return m_links.end(); }

private:
    NodeLinks m_links;
};

} // namespace Nodes
