#include "utils/undo/RemoveNodeLinkGroup.h"

#include "utils/undo/DistinctNodes.h"
#include "utils/undo/StepTexts.h"

#include "nodes/model/ConfigNode.h"

namespace Utils {

RemoveNodeLinkGroup::RemoveNodeLinkGroup(const Nodes::NodeLink &nodeParent,
                                         const Nodes::NodeLinks &nodes, QUndoCommand *parent)
    : NodeCommand(parent), m_nodeParent(nodeParent)
{
    const Nodes::NodesArray removed = distinctNodes(nodes);
    for (const Nodes::NodeLink &node : removed)
        m_nodes.add(node, nodeParent);
    const bool isOne = removed.size() == 1;
    setText(isOne ? QStringLiteral("Удаление %1 %2")
                        .arg(StepTexts::ofNode(removed[0]),
                             QString::fromStdString(removed[0].GetLinkName()))
                  : QStringLiteral("Удаление группы виджетов"));
}

RemoveNodeLinkGroup::~RemoveNodeLinkGroup() = default;

Nodes::Result RemoveNodeLinkGroup::apply()
{
    if (m_nodes.isEmpty())
        return Nodes::Result(Nodes::Result::NotFound, "no node to remove");
    if (!m_nodeParent.isValid())
        return Nodes::Result(Nodes::Result::NotFound,
                             "parent node " + std::to_string(m_nodeParent.GetNodeId()));
    return m_nodes.remove();
}

} // namespace Utils
