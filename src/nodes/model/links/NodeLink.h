#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/NodeType.h"

#include <string>
#include <vector>

namespace Nodes {

class BasicNode;
class ConfigNode;
class NodesCollection;

/// What a node is called where it is mentioned.
enum enLinkNameType {
    LinkNameShort = 0, ///< the node's name
    LinkNamePath = 1   ///< path from the project's root, parts separated by '/'
};

/// Reference to a node by id within its project. Survives deletion of the node (it then resolves
/// to null). Copy on any thread; resolve on the GUI thread only.
class NODES_EXPORT NodeLink
{
public:
    NodeLink() = default;
    /// Refers into the project that is loaded now.
    NodeLink(unsigned long id);
    /// Null gives the empty link.
    NodeLink(const BasicNode *node);
    /// Refers into the given project; used while a project is being built.
    NodeLink(unsigned long id, const NodesCollection *collection);

    /// Null when the link is empty or the node no longer exists.
    ConfigNode *GetNode() const;
    ConfigNode *operator->() const { return GetNode(); }
    unsigned long GetNodeId() const { return m_id; }
    /// Type of the referred node; the empty type when it does not exist.
    NodeType GetNodeType() const;
    /// "" when the node does not exist.
    std::string GetLinkName(enLinkNameType type) const;
    std::string GetLinkName(bool path = false) const
    {
        return GetLinkName(path ? LinkNamePath : LinkNameShort);
    }
    /// Project the link refers into; null when that project has been unloaded.
    NodesCollection *GetNodesCollection() const;
    bool isValid() const { return GetNode() != nullptr; }
    bool isEmpty() const { return m_id == 0; }

    /// Equal when they refer to the same id of the same project, or both are empty.
    bool operator==(const NodeLink &other) const
    {
        return m_id == other.m_id && (m_id == 0 || m_collection == other.m_collection);
    }
    bool operator!=(const NodeLink &other) const { return !(*this == other); }
    bool operator<(const NodeLink &other) const { return m_id < other.m_id; }

private:
    unsigned long m_id = 0;
    unsigned long m_collection = 0; ///< token of the project, never reused within the process
};

using NodeLinks = std::vector<NodeLink>;

} // namespace Nodes
