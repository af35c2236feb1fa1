#pragma once

#include "utils/undo/NodeCommand.h"

#include "nodes/model/links/NodeLink.h"

#include <vector>

namespace Utils {

/// Moves nodes as a group: to another place among their siblings or to another parent, all or none,
/// with their ids and the links to them. Undo brings each back to where it stood.
class UTILS_EXPORT MoveNodesCommand : public NodeCommand
{
public:
    /// The nodes come one after the other, in the order given, before the child `before` of the new
    /// parent; last when `before` is empty or no child of it. Links to nothing and nodes below
    /// others of the group are left out.
    MoveNodesCommand(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &newParent,
                     const Nodes::NodeLink &before = {}, QUndoCommand *parent = nullptr);
    ~MoveNodesCommand() override;

protected:
    Nodes::Result apply() override;
    Nodes::Result revert() override;
    bool changesNothing() const override;

private:
    /// Where a node stood before its step; the last of the group takes the first step.
    struct Step
    {
        Nodes::NodeLink node;
        Nodes::NodeLink parent;
        int index = -1;
        bool isMoved = false;
    };

    Nodes::Result moveOne(Step &step, const Nodes::NodeLink &before);

    Nodes::NodeLink m_parent;
    Nodes::NodeLink m_before;
    std::vector<Step> m_steps;
};

} // namespace Utils
