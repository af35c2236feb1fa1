#include "editor/templates/TemplateCommands.h"

#include "editor/project/ProjectSession.h"
#include "editor/templates/TemplateDialog.h"
#include "editor/templates/TemplateMaker.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QUndoCommand>

#include <algorithm>

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

} // namespace Editor
