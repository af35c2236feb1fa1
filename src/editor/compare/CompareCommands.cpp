#include "editor/compare/CompareCommands.h"

#include "editor/compare/CompareDocument.h"
#include "editor/project/ProjectSession.h"
#include "editor/project/ReadProject.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodesCollection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>

namespace Editor {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Editor::Compare", text);
}

std::unique_ptr<Nodes::NodesCollection> read(Workspace &workspace, const QString &file)
{
    ReadProject found;
    const Nodes::Result done = workspace.session().read(file, found);
    if (done || done == Nodes::Result::Cancelled)
        return std::move(found.project);
    const std::vector<Nodes::LoadMessage> &messages = found.report.GetMessages();
    workspace.tell(Workspace::Error,
                   tr("Сравнить не удалось: %1")
                       .arg(QString::fromStdString(messages.empty() ? done.GetResultTranslated()
                                                                    : messages.back().ToString())));
    return nullptr;
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
