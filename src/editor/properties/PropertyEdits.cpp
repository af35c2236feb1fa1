#include "editor/properties/PropertyEdits.h"

#include "editor/properties/PropertyTexts.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/PropertyValue.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/StepTexts.h"

#include <memory>

namespace Editor {

namespace {

using Utils::ChangePropertyCommand;
using Utils::ChangeTextCommand;
using Utils::CommandGroup;

Nodes::NodeLinks standing(const Nodes::NodesArray &nodes)
{
    Nodes::NodeLinks links;
    links.reserve(nodes.size());
    for (const Nodes::NodeLink &link : nodes) {
        if (link.isValid())
            links.push_back(link);
    }
    return links;
}

QString gone()
{
    return QStringLiteral("Узла больше нет в проекте.");
}

std::unique_ptr<CommandGroup> makeGroup(const QString &what, std::size_t count)
{
    return std::make_unique<CommandGroup>(
        QStringLiteral("Изменение свойства %1 у %2 узлов").arg(what).arg(count));
}

} // namespace

QString PropertyEdits::setProperty(const Nodes::NodesArray &nodes,
                                   const Nodes::PropertyDescriptor &d, const QString &text,
                                   const Utils::Interaction &interaction)
{
    const Nodes::NodeLinks links = standing(nodes);
    if (links.empty())
        return gone();
    const boost::any value =
        Nodes::ReadPropertyValue(d, text.toStdString(), links.front().GetNodesCollection());
    if (value.empty())
        return PropertyTexts::refusal(d, text);
    std::unique_ptr<Utils::NodeCommand> command;
    if (links.size() == 1) {
        command = std::make_unique<ChangePropertyCommand>(links.front(), d.valueId, value);
    } else {
        command = makeGroup(QString::fromStdString(d.nameRu), links.size());
        for (const Nodes::NodeLink &link : links)
            new ChangePropertyCommand(link, d.valueId, value, command.get());
    }
    command->setInteraction(interaction);
    return push(command.release());
}

QString PropertyEdits::setProperties(const Nodes::NodesArray &nodes, const Texts &texts,
                                     const QString &what)
{
    const Nodes::NodeLinks links = standing(nodes);
    if (links.empty())
        return gone();
    std::unique_ptr<CommandGroup> group = makeGroup(what, links.size());
    if (links.size() == 1)
        group->setText(QStringLiteral("Изменение свойства %1 %2 %3")
                           .arg(what, Utils::StepTexts::ofNode(links.front()),
                                QString::fromStdString(links.front().GetLinkName())));
    for (const Nodes::NodeLink &link : links) {
        for (const auto &[valueId, text] : texts) {
            const Nodes::PropertyDescriptor *d = link->GetKind()->FindProperty(valueId);
            if (!d)
                continue;
            const boost::any value =
                Nodes::ReadPropertyValue(*d, text.toStdString(), link.GetNodesCollection());
            if (value.empty())
                return PropertyTexts::refusal(*d, text);
            new ChangePropertyCommand(link, valueId, value, group.get());
        }
    }
    return push(group.release());
}

QString PropertyEdits::setName(const Nodes::NodeLink &node, const QString &name)
{
    if (!node.isValid())
        return gone();
    return push(new ChangeTextCommand(node, ChangeTextCommand::Name, name.toStdString()));
}

QString PropertyEdits::setDescription(const Nodes::NodesArray &nodes, const QString &text)
{
    const Nodes::NodeLinks links = standing(nodes);
    if (links.empty())
        return gone();
    if (links.size() == 1)
        return push(new ChangeTextCommand(links.front(), ChangeTextCommand::Description,
                                          text.toStdString()));
    std::unique_ptr<CommandGroup> group = makeGroup(QStringLiteral("Описание"), links.size());
    for (const Nodes::NodeLink &link : links)
        new ChangeTextCommand(link, ChangeTextCommand::Description, text.toStdString(),
                              group.get());
    return push(group.release());
}

// Done before it is pushed: the stack deletes what was refused, with the reason.
QString PropertyEdits::push(Utils::NodeCommand *command)
{
    std::unique_ptr<Utils::NodeCommand> held(command);
    if (!m_readOnly.isEmpty())
        return m_readOnly;
    held->setRefusalTold(false); // the table tells, beside what was typed
    held->redo();
    held->setRefusalTold(true);
    if (!held->result())
        return QString::fromStdString(held->result().GetResultTranslated());
    return m_push(held.release()) ? QString() : QStringLiteral("Изменение не принято.");
}

} // namespace Editor
