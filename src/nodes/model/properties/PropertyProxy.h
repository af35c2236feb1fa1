#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/NodesArray.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"

#include <boost/any.hpp>

#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

namespace Nodes {

class BasicProperty;
struct PropertyDescriptor;

/// What the nodes of a selection have in one property. A value.
struct PropertySummary
{
    std::string text;       ///< of the first node, as project files write it
    std::size_t count = 0;  ///< nodes that have the property
    bool isMixed = false;   ///< not all have the value of the first
    bool isDefault = false; ///< all have the value of a fresh node
};

/// The common properties of several nodes seen as one object: the property grid of a selection.
/// Refers to the nodes by link, so deleted ones drop out. Made for selections of 10,000 nodes: what
/// the kinds have in common is found by kind, not by node. GUI thread.
class NODES_EXPORT PropertyProxy
{
public:
    void AddNode(const NodeLink &node);
    const NodesArray &GetNodes() const { return m_nodes; }
    bool Contains(const NodeLink &node) const;

    /// Properties of the first node that every other node has too, with the same meaning and type.
    std::vector<BasicProperty *> GetProperties() const;
    /// The same as rows of the first node's kind; they live as long as the kinds.
    std::vector<const PropertyDescriptor *> GetDescriptors() const;
    /// Sets the property on every node. All or nothing: when one node refuses, those already
    /// changed get their old value back and that node's Result is returned.
    [[nodiscard]] Result SetProperty(unsigned valueId, const boost::any &value);

    /// What the nodes have in a property, in a name or in a description. A property that the first
    /// node does not have counts no node.
    PropertySummary GetSummary(unsigned valueId) const;
    PropertySummary GetNameSummary() const;
    PropertySummary GetDescriptionSummary() const;
    /// Each value, as text, with the number of nodes that have it, the most frequent first; at most
    /// `limit` of them.
    std::vector<std::pair<std::string, std::size_t>> CountValues(unsigned valueId,
                                                                 std::size_t limit) const;

    /// One change of one of the nodes: its property, or name and description, or its children.
    /// Removed is told of every node that leaves the tree: one of the nodes may stand below it.
    struct Change
    {
        enum enWhat { Property, Text, Children, Removed };

        enWhat what = Property;
        NodeLink node;
        unsigned valueId = 0; ///< of a property; 0: several
    };
    /// Hears of every change of the nodes that were added before, with one subscription for all of
    /// them.
    Connection ConnectChanged(std::function<void(const Change &)> slot) const;

private:
    std::vector<const ConfigNode *> alive() const;

    NodesArray m_nodes;
    std::unordered_set<unsigned long> m_ids;
};

} // namespace Nodes
