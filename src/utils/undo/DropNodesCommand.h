#pragma once

#include "utils/undo/HeldNodes.h"
#include "utils/undo/NodeCommand.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesArray.h"

#include <boost/any.hpp>

#include <vector>

namespace Utils {

/// Drops nodes on a node, which takes links to them or copies of them (ConfigNode::DropNodes). Undo
/// gives its links the values they had and takes the copies out again.
class UTILS_EXPORT DropNodesCommand : public NodeCommand
{
public:
    DropNodesCommand(const Nodes::NodeLink &target, const Nodes::NodesArray &nodes,
                     Nodes::ConfigNode::enDropFlags flags, QUndoCommand *parent = nullptr);
    ~DropNodesCommand() override;

protected:
    Nodes::Result apply() override;
    Nodes::Result revert() override;
    bool isHoldingNodes() const override { return m_copies.isHolding(); }
    bool changesNothing() const override { return m_changes.empty() && m_copies.isEmpty(); }

private:
    struct Change
    {
        Nodes::NodeLink node; ///< the target, or one of its children
        unsigned valueId;
        boost::any before;
        boost::any after;
    };

    Nodes::Result drop(Nodes::ConfigNode &target);
    Nodes::Result setLinks(bool isBefore) const;

    Nodes::NodeLink m_target;
    Nodes::NodesArray m_nodes;
    Nodes::ConfigNode::enDropFlags m_flags;
    bool m_isDropped = false; ///< what it led to is known
    std::vector<Change> m_changes;
    HeldNodes m_copies;
};

} // namespace Utils
