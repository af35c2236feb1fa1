#include "editor/templates/TemplateCommands.h"

#include "editor/picker/NodePicker.h"
#include "editor/project/ProjectSession.h"
#include "editor/templates/InstanceModel.h"
#include "editor/templates/TemplateDialog.h"
#include "editor/templates/TemplateMaker.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

#include <QUndoCommand>

#include <algorithm>
#include <memory>

namespace Editor {

namespace {

/// The window or composition that the element stands in.
const Nodes::ConfigNode *screenOf(const Nodes::ConfigNode *node)
{
    while (node && !dynamic_cast<const Nodes::BasicWindow *>(node) &&
           !dynamic_cast<const Nodes::BasicComposition *>(node))
        node = node->GetParent();
    return node;
}

} // namespace

bool TemplateCommands::canMake(Workspace &workspace)
{
    const Nodes::NodeLinks &nodes = workspace.selection().nodes();
    return !workspace.session().isReadOnly() && !nodes.empty() &&
           std::all_of(nodes.begin(), nodes.end(), [](const Nodes::NodeLink &link) {
               return dynamic_cast<const Nodes::BasicWidget *>(link.GetNode()) != nullptr;
           });
}

void TemplateCommands::make(Workspace &workspace)
{
    const Nodes::NodeLinks elements = workspace.selection().nodes();
    const Nodes::ConfigNode *screen = screenOf(elements.front().GetNode());
    if (!screen || !screen->GetParent())
        return;
    TemplateDialog dialog(workspace.window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString name = dialog.name();
    TemplateMaker maker(*workspace.session().project(), elements);
    TemplateMaker::Made made;
    QString whyNot;
    QUndoCommand *command =
        maker.make(name.toStdString(), *screen->GetParent(), dialog.originals(), made, whyNot);
    if (!command) {
        workspace.tell(Workspace::Warning, whyNot);
        return;
    }
    if (!workspace.push(command))
        return;
    if (made.instance.GetNode()) {
        workspace.tell(
            Workspace::Info,
            QStringLiteral("Сделан шаблон «%1», выделенное заменено его экземпляром. Для "
                           "других устройств копируйте экземпляр и перетащите на копию "
                           "её устройство.")
                .arg(name));
        workspace.reveal(made.instance);
        return;
    }
    workspace.tell(Workspace::Info,
                   QStringLiteral("Сделаны шаблон «%1» и действие, которое его открывает. Сигналы "
                                  "других экземпляров задайте на панели «Экземпляры шаблона».")
                       .arg(name));
    workspace.open(made.window);
    workspace.reveal(made.window); // selected last: its instances are shown
}

bool TemplateCommands::canChoose(Workspace &workspace)
{
    const Nodes::NodeLinks &nodes = workspace.selection().nodes();
    return !workspace.session().isReadOnly() && !nodes.empty() &&
           std::all_of(nodes.begin(), nodes.end(), [](const Nodes::NodeLink &link) {
               return dynamic_cast<const Nodes::widgetInstance *>(link.GetNode()) != nullptr;
           });
}

void TemplateCommands::choose(Workspace &workspace)
{
    const Nodes::NodeLinks instances = workspace.selection().nodes();
    const auto *first = dynamic_cast<const Nodes::widgetInstance *>(instances.front().GetNode());
    const auto isFit = [&instances](const Nodes::ConfigNode &node) {
        return std::all_of(instances.begin(), instances.end(), [&node](const auto &link) {
            const auto *instance = dynamic_cast<const Nodes::widgetInstance *>(link.GetNode());
            return instance && instance->CanShow(node);
        });
    };
    const Nodes::NodeLink source =
        NodePicker::pick(workspace.session().project(), QStringLiteral("Шаблон экземпляра"), isFit,
                         Nodes::NodeLink(first->GetTemplate()), workspace.window());
    QUndoCommand *command = source.GetNode() ? makeChoice(instances, source) : nullptr;
    if (command)
        workspace.push(command);
}

QUndoCommand *TemplateCommands::makeChoice(const Nodes::NodeLinks &instances,
                                           const Nodes::NodeLink &source)
{
    auto group = std::make_unique<Utils::CommandGroup>(QStringLiteral("Другой шаблон"));
    for (const Nodes::NodeLink &link : instances) {
        const auto *instance = dynamic_cast<const Nodes::widgetInstance *>(link.GetNode());
        if (!instance || !source.GetNode() || !instance->CanShow(*source.GetNode()))
            return nullptr;
        if (instance->GetTemplate() != source.GetNode())
            new Utils::ChangePropertyCommand(link, Nodes::widgetInstance::Prop::Template, source,
                                             group.get());
    }
    return group->childCount() > 0 ? group.release() : nullptr;
}

void TemplateCommands::enter(Workspace &workspace, const Nodes::NodeLink &element)
{
    const auto *instance = dynamic_cast<const Nodes::widgetInstance *>(element.GetNode());
    if (instance && instance->GetTemplate())
        workspace.open(Nodes::NodeLink(instance->GetTemplate()));
    else if (instance)
        workspace.revealProperty(element,
                                 QString::fromUtf8(Nodes::widgetInstance::Prop::Template.key));
}

bool TemplateCommands::canOpen(Workspace &workspace)
{
    const Nodes::NodeLinks &nodes = workspace.selection().nodes();
    return !nodes.empty() && InstanceModel::templateOf(nodes.front().GetNode()).GetNode();
}

void TemplateCommands::open(Workspace &workspace)
{
    const Nodes::NodeLink source =
        InstanceModel::templateOf(workspace.selection().nodes().front().GetNode());
    workspace.open(source);
    workspace.reveal(source);
}

} // namespace Editor
