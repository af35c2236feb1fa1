#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"

#include <memory>

namespace Nodes {

/// List of node links in the order of insertion. A value; may name a node twice.
class NODES_EXPORT NodesArray
{
public:
    NodesArray() = default;
    NodesArray(NodeLinks links) : m_links(std::move(links)) {}

    void push_back(const NodeLink &link) { m_links.push_back(link); }
    std::size_t size() const { return m_links.size(); }
    bool empty() const { return m_links.empty(); }
    const NodeLink &operator[](std::size_t index) const { return m_links[index]; }
    NodeLinks::const_iterator begin() const { return m_links.begin(); }
    NodeLinks::const_iterator end() const { return m_links.end(); }
    const NodeLinks &GetLinks() const { return m_links; }
    bool Contains(const NodeLink &link) const;

    /// Detached copy of `source` with its properties and children: it keeps ids, parent and
    /// project for look-ups but is in no index, so links still resolve to the original. It may
    /// outlive all three: it then has no parent and no project.
    /// Null when the type differs from the source's or the source is null.
    static std::unique_ptr<ConfigNode> CreateNodeCopy(NodeType type, const ConfigNode *source);

private:
    NodeLinks m_links;
};

} // namespace Nodes
