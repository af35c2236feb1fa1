#include "utils/undo/ChangePropertyCommand.h"

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
    setText(
        QStringLiteral("Изменение свойства %2 виджета %1")
            .arg(QString::fromStdString(node.GetLinkName()), QString::fromStdString(propertyName)));
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
    const std::string previousText = property ? property->ToString() : std::string();
    m_previous = property ? property->GetPropertyValue() : boost::any();
    const Nodes::Result result = setProperty(m_node, m_valueId, m_value);
    if (result && property->ToString() == previousText)
        setObsolete(true);
    return result;
}

Nodes::Result ChangePropertyCommand::revert()
{
    return setProperty(m_node, m_valueId, m_previous);
}

} // namespace Utils
