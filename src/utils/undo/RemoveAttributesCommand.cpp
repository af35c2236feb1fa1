#include "utils/undo/RemoveAttributesCommand.h"

namespace Utils {

RemoveAttributesCommand::RemoveAttributesCommand(const Nodes::NodeLink &node,
                                                 std::vector<std::string> keys,
                                                 QUndoCommand *parent)
    : NodeCommand(parent), m_node(node), m_keys(std::move(keys))
{
    setText(QStringLiteral("Удаление недействующих атрибутов узла %1")
                .arg(QString::fromStdString(node.GetLinkName())));
}

RemoveAttributesCommand::~RemoveAttributesCommand() = default;

Nodes::Result RemoveAttributesCommand::apply()
{
    Nodes::ConfigNode *node = m_node.GetNode();
    if (!node)
        return {Nodes::Result::NotFound, "node " + std::to_string(m_node.GetNodeId())};
    m_before = node->GetForeignAttributes();
    for (const std::string &key : m_keys)
        node->RemoveForeignAttribute(key);
    if (node->GetForeignAttributes().size() == m_before.size())
        return {node, Nodes::Result::NotFound, "attributes to remove"};
    node->NotifyPropertyChanged(nullptr);
    return {};
}

Nodes::Result RemoveAttributesCommand::revert()
{
    Nodes::ConfigNode *node = m_node.GetNode();
    if (!node)
        return {Nodes::Result::NotFound, "node " + std::to_string(m_node.GetNodeId())};
    const Nodes::BasicNode::Attributes left = node->GetForeignAttributes();
    for (const auto &attribute : left)
        node->RemoveForeignAttribute(attribute.first);
    for (const auto &[key, value] : m_before)
        node->AddForeignAttribute(key, value);
    node->NotifyPropertyChanged(nullptr);
    return {};
}

} // namespace Utils
