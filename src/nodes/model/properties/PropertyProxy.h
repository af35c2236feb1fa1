#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/NodesArray.h"
#include "nodes/values/Result.h"

#include <boost/any.hpp>

namespace Nodes {

class BasicProperty;

/// The common properties of several nodes seen as one object: the property grid of a selection.
/// Refers to the nodes by link, so deleted ones drop out. GUI thread.
class NODES_EXPORT PropertyProxy
{
public:
    void AddNode(const NodeLink &node);
    const NodesArray &GetNodes() const { return m_nodes; }

    /// Properties of the first node that every other node has too, by value id.
    std::vector<BasicProperty *> GetProperties() const;
    /// Sets the property on every node. All or nothing: when one node refuses, those already
    /// changed get their old value back and that node's Result is returned.
    [[nodiscard]] Result SetProperty(unsigned valueId, const boost::any &value);

private:
    NodesArray m_nodes;
};

} // namespace Nodes
