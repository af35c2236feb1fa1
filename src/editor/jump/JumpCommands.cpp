#include "editor/jump/JumpCommands.h"

#include "editor/jump/JumpDialog.h"
#include "editor/jump/JumpModel.h"
#include "editor/project/ProjectSession.h"
#include "editor/shell/DocumentTabs.h"
#include "editor/tables/DocumentTable.h"
#include "editor/workspace/Workspace.h"

#include <QAction>
#include <QMainWindow>

namespace Editor {

void JumpCommands::jump(Workspace &workspace)
{
    const auto *window = qobject_cast<QMainWindow *>(workspace.window());
    const auto *tabs = window ? window->findChild<DocumentTabs *>() : nullptr;
    JumpDialog dialog(new JumpModel(workspace.session().project(),
                                    tabs ? tabs->latest() : Nodes::NodeLinks(),
                                    window ? MenuEntries(*window) : QVector<MenuEntry>()),
                      workspace.window());
    if (dialog.exec() != QDialog::Accepted)
        return;
    if (dialog.command()) {
        dialog.command()->trigger();
        return;
    }
    const Nodes::NodeLink node = dialog.node();
    if (!node.isValid())
        return;
    if (!dialog.isToBeShown()) {
        workspace.open(node);
        workspace.selection().select({node}, &workspace);
    }
    if (dialog.isToBeShown() || !FindDocument(*node.GetNode()))
        workspace.reveal(node);
}

} // namespace Editor
