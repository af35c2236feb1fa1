#include "utils/undo/RemoveNodeLinkGroup.h"

#include "nodes/model/ConfigNode.h"

namespace Utils {

namespace {

bool isBelowAny(const Nodes::NodeLink &link, const Nodes::NodesArray &nodes)
{
    for (const Nodes::ConfigNode *above = link->GetParent(); above; above = above->GetParent()) {
        if (nodes.Contains(Nodes::NodeLink(above)))
            return true;
    }
    return false;
}

/// Each node once, without those that go with another.
Nodes::NodesArray distinct(const Nodes::NodeLinks &links)
{
    const Nodes::NodesArray all(links);
    Nodes::NodesArray nodes;
    for (const Nodes::NodeLink &link : links) {
        if (link.isValid() && !nodes.Contains(link) && !isBelowAny(link, all))
            nodes.push_back(link);
    }
    return nodes;
}

} // namespace

RemoveNodeLinkGroup::RemoveNodeLinkGroup(const Nodes::NodeLink &nodeParent,
                                         const Nodes::NodeLinks &nodes, QUndoCommand *parent)
    : NodeCommand(parent), m_nodeParent(nodeParent)
{
    const Nodes::NodesArray removed = distinct(nodes);
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
