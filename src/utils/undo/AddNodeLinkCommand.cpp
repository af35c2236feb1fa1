#include "utils/undo/AddNodeLinkCommand.h"

#include "nodes/model/ConfigNode.h"

namespace Utils {

AddNodeLinkCommand::AddNodeLinkCommand(const Nodes::NodeLink &node,
                                       const Nodes::NodeLink &nodeParent, QUndoCommand *parent)
    : NodeCommand(parent)
{
    m_nodes.add(node, nodeParent);
    setText(
        QStringLiteral("Добавление виджета %1").arg(QString::fromStdString(node.GetLinkName())));
}

AddNodeLinkCommand::~AddNodeLinkCommand() = default;

} // namespace Utils
