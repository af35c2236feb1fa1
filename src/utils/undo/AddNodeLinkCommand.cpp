#include "utils/undo/AddNodeLinkCommand.h"

#include "utils/undo/StepTexts.h"

#include "nodes/model/ConfigNode.h"

namespace Utils {

AddNodeLinkCommand::AddNodeLinkCommand(const Nodes::NodeLink &node,
                                       const Nodes::NodeLink &nodeParent, QUndoCommand *parent)
    : NodeCommand(parent)
{
    m_nodes.add(node, nodeParent);
    setText(QStringLiteral("Добавление %1 %2")
                .arg(StepTexts::ofNode(node), QString::fromStdString(node.GetLinkName())));
}

AddNodeLinkCommand::~AddNodeLinkCommand() = default;

} // namespace Utils
