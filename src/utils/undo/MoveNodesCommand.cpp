#include "utils/undo/MoveNodesCommand.h"

#include "utils/undo/DistinctNodes.h"

#include "nodes/model/ConfigNode.h"

#include <algorithm>

namespace Utils {

namespace {

Nodes::Result noNode(const Nodes::NodeLink &link)
{
    return Nodes::Result(Nodes::Result::NotFound,
                         "node " + std::to_string(link.GetNodeId()) + " in the tree");
}

/// `before`, or the next of its siblings that does not move itself; empty when there is none.
Nodes::NodeLink firstStaying(const Nodes::NodeLink &before, const Nodes::NodesArray &moved)
{
    const Nodes::ConfigNode *node = before.GetNode();
    const Nodes::ConfigNode *parent = node ? node->GetParent() : nullptr;
    for (int i = parent ? parent->IndexOf(node) : -1; i >= 0 && i < parent->GetNodeCount(); ++i) {
        const Nodes::NodeLink sibling(parent->GetNodeAt(i));
        if (!moved.Contains(sibling))
            return sibling;
    }
    return {};
}

/// Index below `parent`, not counting the node itself, that brings it right before `next`.
int placeBefore(const Nodes::ConfigNode *next, const Nodes::ConfigNode &node,
                const Nodes::ConfigNode &parent)
{
    const int own = parent.IndexOf(&node);
    const int before = next ? parent.IndexOf(next) : -1;
    const int place = before < 0 ? parent.GetNodeCount() : before;
    return own >= 0 && own < place ? place - 1 : place;
}

} // namespace

MoveNodesCommand::MoveNodesCommand(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &newParent,
                                   const Nodes::NodeLink &before, QUndoCommand *parent)
    : NodeCommand(parent), m_parent(newParent)
{
    const Nodes::NodesArray moved = distinctNodes(nodes);
    m_before = firstStaying(before, moved);
    for (const Nodes::NodeLink &node : moved)
        m_steps.push_back({node, {}, -1, false});
    setText(moved.size() == 1 ? QStringLiteral("Перемещение узла %1")
                                    .arg(QString::fromStdString(moved[0].GetLinkName()))
                              : QStringLiteral("Перемещение группы узлов"));
}

MoveNodesCommand::~MoveNodesCommand() = default;

Nodes::Result MoveNodesCommand::moveOne(Step &step, const Nodes::NodeLink &before)
{
    const Nodes::ConfigNode *node = step.node.GetNode();
    Nodes::ConfigNode *from = node ? node->GetParent() : nullptr;
    Nodes::ConfigNode *to = m_parent.GetNode();
    if (!from || !to)
        return noNode(from ? m_parent : step.node);
    step.parent = Nodes::NodeLink(from);
    step.index = from->IndexOf(node);
    const int place = placeBefore(before.GetNode(), *node, *to);
    step.isMoved = from != to || place != step.index;
    return from->MoveNode(step.node, *to, place);
}

Nodes::Result MoveNodesCommand::apply()
{
    if (m_steps.empty())
        return Nodes::Result(Nodes::Result::NotFound, "no node to move");
    // From the last on, each before the one that follows it: what is in place does not move.
    Nodes::NodeLink next = m_before;
    for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step) {
        const Nodes::Result moved = moveOne(*step, next);
        next = step->node;
        if (moved)
            continue;
        while (step != m_steps.rbegin()) {
            --step;
            (void)m_parent->ReturnNode(step->node, *step->parent.GetNode(), step->index);
        }
        return moved;
    }
    return Nodes::Result();
}

Nodes::Result MoveNodesCommand::revert()
{
    for (const Step &step : m_steps) {
        const Nodes::ConfigNode *node = step.node.GetNode();
        if (!node || !node->GetParent() || !step.parent.isValid())
            return noNode(node ? step.parent : step.node);
    }
    for (auto step = m_steps.begin(); step != m_steps.end(); ++step) {
        const Nodes::Result returned =
            step->node->GetParent()->ReturnNode(step->node, *step->parent.GetNode(), step->index);
        if (returned)
            continue;
        while (step != m_steps.begin()) {
            const Nodes::NodeLink next = step->node;
            --step;
            (void)moveOne(*step, next);
        }
        return returned;
    }
    return Nodes::Result();
}

bool MoveNodesCommand::changesNothing() const
{
    return std::none_of(m_steps.begin(), m_steps.end(),
                        [](const Step &step) { return step.isMoved; });
}

} // namespace Utils
