#pragma once

#include "utils/undo/HeldNodes.h"
#include "utils/undo/NodeCommand.h"

namespace Utils {

/// Removes nodes with all that stands below them, and every link in the project that leads there.
/// Undo brings back all of it: ids, order among the siblings, links.
class UTILS_EXPORT RemoveNodeLinkGroup : public NodeCommand
{
public:
    /// `nodeParent` is where the group stands; a node found below another parent is removed from
    /// there. Links to nothing and nodes below others of the group are left out.
    RemoveNodeLinkGroup(const Nodes::NodeLink &nodeParent, const Nodes::NodeLinks &nodes,
                        QUndoCommand *parent = nullptr);
    ~RemoveNodeLinkGroup() override;

protected:
    /// NotFound when there is nothing to remove or the parent is gone.
    Nodes::Result apply() override;
    Nodes::Result revert() override { return m_nodes.insert(); }
    bool isHoldingNodes() const override { return m_nodes.isHolding(); }

private:
    Nodes::NodeLink m_nodeParent;
    HeldNodes m_nodes;
};

} // namespace Utils
