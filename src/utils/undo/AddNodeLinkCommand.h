#pragma once

#include "utils/undo/HeldNodes.h"
#include "utils/undo/NodeCommand.h"

namespace Utils {

/// Adds a node below a parent, as its last child. Undo takes it out again and holds it, together
/// with the links that came to lead to it meanwhile.
class UTILS_EXPORT AddNodeLinkCommand : public NodeCommand
{
public:
    /// `node` stands below `parent` already or is a clone that its project holds. A clone that the
    /// parent refuses stays with its project.
    AddNodeLinkCommand(const Nodes::NodeLink &node, const Nodes::NodeLink &nodeParent,
                       QUndoCommand *parent = nullptr);
    ~AddNodeLinkCommand() override;

protected:
    Nodes::Result apply() override { return m_nodes.insert(); }
    Nodes::Result revert() override { return m_nodes.remove(); }
    bool isHoldingNodes() const override { return m_nodes.isHolding(); }

private:
    HeldNodes m_nodes;
};

} // namespace Utils
