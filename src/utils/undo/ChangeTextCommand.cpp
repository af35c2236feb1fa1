#include "utils/undo/ChangeTextCommand.h"

#include "nodes/model/ConfigNode.h"

namespace Utils {

namespace {

Nodes::Result noNode(const Nodes::NodeLink &link)
{
    return Nodes::Result(Nodes::Result::NotFound, "node " + std::to_string(link.GetNodeId()));
}

} // namespace

ChangeTextCommand::ChangeTextCommand(const Nodes::NodeLink &node, enWhat what, std::string text,
                                     QUndoCommand *parent)
    : NodeCommand(parent), m_node(node), m_what(what), m_text(std::move(text))
{
    const QString name = QString::fromStdString(node.GetLinkName());
    setText(what == Name ? QStringLiteral("Переименование узла %1 в %2")
                               .arg(name, QString::fromStdString(m_text))
                         : QStringLiteral("Изменение описания узла %1").arg(name));
}

ChangeTextCommand::~ChangeTextCommand() = default;

Nodes::Result ChangeTextCommand::apply()
{
    Nodes::ConfigNode *node = m_node.GetNode();
    if (!node)
        return noNode(m_node);
    m_previous = m_what == Name ? node->GetName() : node->GetDescription();
    if (m_what == Name)
        return node->Rename(m_text);
    node->SetDescription(m_text);
    return Nodes::Result();
}

Nodes::Result ChangeTextCommand::revert()
{
    Nodes::ConfigNode *node = m_node.GetNode();
    if (!node)
        return noNode(m_node);
    if (m_what == Name)
        node->SetName(m_previous); // a name it has had is taken back whatever it is
    else
        node->SetDescription(m_previous);
    return Nodes::Result();
}

bool ChangeTextCommand::isContinuedBy(const NodeCommand &newer) const
{
    const auto &other = static_cast<const ChangeTextCommand &>(newer);
    return other.m_node == m_node && other.m_what == m_what;
}

void ChangeTextCommand::absorb(const NodeCommand &newer)
{
    m_text = static_cast<const ChangeTextCommand &>(newer).m_text;
    setText(newer.text());
}

} // namespace Utils
