#include "editor/compare/CompareCommands.h"

#include "editor/compare/CompareDocument.h"
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
    std::unique_ptr<Nodes::NodesCollection> other = read(workspace, file);
    if (other)
        workspace.show(new CompareDocument(workspace, std::move(other),
                                           tr("Файл %1").arg(QDir::toNativeSeparators(file)),
                                           workspace.window()));
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
