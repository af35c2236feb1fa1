#include "editor/signals/DataCommands.h"

#include "editor/project/ProjectSession.h"
#include "editor/signals/SignalTable.h"
#include "editor/users/StandardRoles.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/drivers/BasicDriver.h"
#include "nodes/model/NodesCollection.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

namespace Editor::DataCommands {

using Nodes::NodeLink;
using Nodes::NodeType;

namespace {

NodeLink first(Workspace &workspace, NodeType::enNodeSubtype code)
{
    Nodes::NodeLinks found;
    if (const Nodes::NodesCollection *project = workspace.session().project())
        project->FindNodes(NodeType(code), &found);
    return found.empty() ? NodeLink() : found.front();
}

QString tr(const char *text)
{
    return QCoreApplication::translate("Editor::DataCommands", text);
}

/// Looking must not change the project: what is missing is made when that is wanted.
bool mayMakeUsers(Workspace &workspace)
{
    QMessageBox box(QMessageBox::Question, tr("Пользователи и права"),
                    tr("В проекте нет пользователей и прав: на станции каждый может всё. Завести "
                       "их?"),
                    QMessageBox::NoButton, workspace.window());
    const QAbstractButton *make = box.addButton(tr("Завести"), QMessageBox::AcceptRole);
    box.addButton(tr("Отмена"), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == make;
}

bool hasTable(const Nodes::ConfigNode &node)
{
    return SignalTable::shows(node) || dynamic_cast<const Nodes::BasicDriver *>(&node);
}

} // namespace

bool hasStation(Workspace &workspace)
{
    return first(workspace, NodeType::SubtypeStation).isValid();
}

void openSignals(Workspace &workspace)
{
    const Nodes::NodeLinks &selected = workspace.selection().nodes();
    const Nodes::ConfigNode *node = selected.empty() ? nullptr : selected.front().GetNode();
    while (node && !hasTable(*node))
        node = node->GetParent();
    workspace.open(node ? node->GetNodeLink() : first(workspace, NodeType::SubtypeStation));
}

void openUsers(Workspace &workspace)
{
    NodeLink users = first(workspace, Nodes::systemAuthentication::Code);
    if (users.isEmpty() && mayMakeUsers(workspace)) {
        NodeLink made;
        if (workspace.push(StandardRoles::add(first(workspace, NodeType::SubtypeStation), made))) {
            users = made;
            workspace.tell(
                Workspace::Info,
                tr("Заведены гость, оператор и инженер. Задайте пароли двум последним: до "
                   "этого станция показывает, но ничего не даёт изменить."));
        }
    }
    if (!users.isEmpty())
        workspace.open(users);
}

} // namespace Editor::DataCommands
