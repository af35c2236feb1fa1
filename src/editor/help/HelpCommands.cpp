#include "editor/help/HelpCommands.h"

#include "editor/help/KeysDialog.h"
#include "editor/workspace/Workspace.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QMainWindow>
#include <QMessageBox>
#include <QUrl>

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
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(documents())))
        workspace.tell(Workspace::Warning,
                       QStringLiteral("Каталог документации открыть нечем: %1").arg(documents()));
}

void HelpCommands::showAbout(Workspace &workspace)
{
    QMessageBox box(QMessageBox::Information, QStringLiteral("О программе"),
                    QStringLiteral("Конфигуратор станции оператора, версия %1")
                        .arg(QApplication::applicationVersion()),
                    QMessageBox::Close, workspace.window());
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QStringLiteral("Создаёт и правит проекты: окна, сигналы, тревоги, "
                                          "отчёты, права.\nQt %1")
                               .arg(QString::fromLatin1(qVersion())));
    box.exec();
}

} // namespace Editor
