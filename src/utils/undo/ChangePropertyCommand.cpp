#include "utils/undo/ChangePropertyCommand.h"

#include "utils/undo/StepTexts.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/properties/PropertyProxy.h"

namespace Utils {

namespace {

Nodes::Result setProperty(const Nodes::NodeLink &node, unsigned valueId, const boost::any &value)
{
    if (!node.isValid())
        return Nodes::Result(Nodes::Result::NotFound, "node " + std::to_string(node.GetNodeId()));
    Nodes::PropertyProxy proxy;
    proxy.AddNode(node);
    return proxy.SetProperty(valueId, value);
}

Nodes::BasicProperty *findProperty(const Nodes::NodeLink &link, unsigned valueId)
{
    const Nodes::ConfigNode *node = link.GetNode();
    return node ? node->GetPropertyByValueId(valueId) : nullptr;
}

} // namespace

ChangePropertyCommand::ChangePropertyCommand(const Nodes::NodeLink &node, unsigned valueId,
                                             boost::any value, QUndoCommand *parent)
    : NodeCommand(parent), m_node(node), m_valueId(valueId), m_value(std::move(value))
{
    const Nodes::BasicProperty *property = findProperty(node, valueId);
    const std::string propertyName = property ? property->GetName() : std::to_string(valueId);
    setText(QStringLiteral("Изменение свойства %1 %2 %3")
                .arg(QString::fromStdString(propertyName), StepTexts::ofNode(node),
                     QString::fromStdString(node.GetLinkName())));
}

ChangePropertyCommand::~ChangePropertyCommand() = default;

Nodes::Result ChangePropertyCommand::setPropertyCommand()
{
    redo();
    return result();
}

Nodes::Result ChangePropertyCommand::apply()
{
    const Nodes::BasicProperty *property = findProperty(m_node, m_valueId);
    m_previous = property ? property->GetPropertyValue() : boost::any();
    m_previousText = property ? property->ToString() : std::string();
    return setProperty(m_node, m_valueId, m_value);
}

Nodes::Result ChangePropertyCommand::revert()
{
    return setProperty(m_node, m_valueId, m_previous);
}

bool ChangePropertyCommand::changesNothing() const
{
    const Nodes::BasicProperty *property = findProperty(m_node, m_valueId);
    return property && property->ToString() == m_previousText;
}

bool ChangePropertyCommand::isContinuedBy(const NodeCommand &newer) const
{
    const auto &other = static_cast<const ChangePropertyCommand &>(newer);
    return other.m_node == m_node && other.m_valueId == m_valueId;
}

void ChangePropertyCommand::absorb(const NodeCommand &newer)
{
    m_value = static_cast<const ChangePropertyCommand &>(newer).m_value;
}

} // namespace Utils
