#include "editor/help/HelpCommands.h"

#include "editor/help/AboutDialog.h"
#include "editor/help/DocumentsWindow.h"
#include "editor/help/KeysDialog.h"
#include "editor/workspace/Workspace.h"

#include <QApplication>
#include <QDir>
#include <QMainWindow>

namespace Editor {

namespace {

/// Beside the installed program, else where it was built from; "" for neither.
QString documents()
{
    for (const QString &place :
         {QApplication::applicationDirPath() + QStringLiteral("/../share/doc/OperatorStation"),
          QStringLiteral(EDITOR_DOCS)}) {
        if (QFileInfo::exists(place + QStringLiteral("/configurator.md")))
            return QDir::cleanPath(place);
    }
    return {};
}

} // namespace

bool HelpCommands::always(Workspace &)
{
    return true;
}

bool HelpCommands::hasDocuments(Workspace &)
{
    return !documents().isEmpty();
}

void HelpCommands::showKeys(Workspace &workspace)
{
    const auto *window = qobject_cast<QMainWindow *>(workspace.window());
    auto *dialog = new KeysDialog(workspace.window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (window)
        dialog->addMenus(*window);
    dialog->show(); // stays beside the work
}

void HelpCommands::openDocuments(Workspace &workspace)
{
    auto *window = new DocumentsWindow(documents(), workspace.window());
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->open(QStringLiteral("configurator.md"));
    window->show(); // stays beside the work
}

void HelpCommands::showAbout(Workspace &workspace)
{
    AboutDialog(workspace.window()).exec();
}

} // namespace Editor
