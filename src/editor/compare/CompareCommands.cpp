#include "editor/compare/CompareCommands.h"

#include "editor/compare/CompareDialog.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>

namespace Editor {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Editor::Compare", text);
}

std::unique_ptr<Nodes::NodesCollection> read(Workspace &workspace, const QString &file)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    Nodes::ProjectReader reader;
    reader.SetLenient(true);
    std::unique_ptr<Nodes::NodesCollection> project;
    const Nodes::Result done = reader.ReadFile(file.toStdString(), project);
    QGuiApplication::restoreOverrideCursor();
    if (!done)
        workspace.tell(
            Workspace::Error,
            tr("Сравнить не удалось: %1")
                .arg(QString::fromStdString(reader.GetReport().GetMessages().back().ToString())));
    return project;
}

} // namespace

void CompareWithFile(Workspace &workspace, const QString &file)
{
    const std::unique_ptr<Nodes::NodesCollection> other = read(workspace, file);
    if (!other)
        return;
    CompareDialog dialog(workspace.window());
    dialog.setProjects({tr("Файл %1").arg(QDir::toNativeSeparators(file)), other.get()},
                       {tr("Открытый проект"), workspace.session().project()});
    QObject::connect(&dialog, &CompareDialog::nodeActivated, &workspace,
                     [&](const Nodes::NodeLink &node) {
                         dialog.accept();
                         workspace.open(node);
                         workspace.reveal(node);
                     });
    dialog.exec();
}

void CompareWithSaved(Workspace &workspace)
{
    CompareWithFile(workspace, workspace.session().file());
}

void CompareByDialog(Workspace &workspace)
{
    const QString file = QFileDialog::getOpenFileName(
        workspace.window(), tr("Сравнить с проектом"), workspace.session().directory(),
        tr("Проекты (*.xml *.xml.bak);;Все файлы (*)"));
    if (!file.isEmpty())
        CompareWithFile(workspace, file);
}

} // namespace Editor
