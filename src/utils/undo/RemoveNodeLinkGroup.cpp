#include "utils/undo/RemoveNodeLinkGroup.h"

#include "utils/undo/DistinctNodes.h"

#include "nodes/model/ConfigNode.h"

namespace Utils {

RemoveNodeLinkGroup::RemoveNodeLinkGroup(const Nodes::NodeLink &nodeParent,
                                         const Nodes::NodeLinks &nodes, QUndoCommand *parent)
    : NodeCommand(parent), m_nodeParent(nodeParent)
{
    const Nodes::NodesArray removed = distinctNodes(nodes);
    for (const Nodes::NodeLink &node : removed)
        m_nodes.add(node, nodeParent);
    setText(removed.size() == 1 ? QStringLiteral("Удаление виджета %1")
                                      .arg(QString::fromStdString(removed[0].GetLinkName()))
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
