#include "editor/signals/ArchiveGroups.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/archive/archiverGroup.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"

#include <QCoreApplication>

namespace Editor::ArchiveGroups {

using Nodes::archiverGroup;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Editor::ArchiveGroups", text);
}

Nodes::NodeLinks notArchived(const Nodes::NodeLinks &nodes)
{
    Nodes::NodeLinks wanted;
    const Nodes::ConfigNode *any = nodes.empty() ? nullptr : nodes[0].GetNode();
    if (!any)
        return wanted;
    const auto archived = Nodes::FindArchivedSignals(*any);
    for (const Nodes::NodeLink &link : nodes) {
        const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(link.GetNode());
        if (signal && archived.count(signal) == 0)
            wanted.push_back(link);
    }
    return wanted;
}

template <class Node> Node *first(const Nodes::NodesCollection &project)
{
    Nodes::NodeLinks found;
    project.FindNodes(Nodes::NodeType(Node::Code), &found);
    return found.empty() ? nullptr : dynamic_cast<Node *>(found[0].GetNode());
}

QUndoCommand *makeGroup(Nodes::NodesCollection &project, Nodes::ConfigNode &archiver,
                        const Nodes::NodeLinks &scope)
{
    const Nodes::KindInfo *kind =
        Nodes::KindTable::Instance().Find(Nodes::NodeType(archiverGroup::Code));
    std::unique_ptr<Nodes::ConfigNode> group = project.CreateDetached(*kind);
    group->SetName("Архив сигналов");
    (void)group->SetProperty(archiverGroup::Prop::Scope, scope);
    const Nodes::NodeLink link = group->GetNodeLink();
    if (!project.HoldClone(group, true))
        return nullptr;
    return new Utils::AddNodeLinkCommand(link, archiver.GetNodeLink());
}

} // namespace

void add(Workspace &workspace, const Nodes::NodeLinks &nodes)
{
    const Nodes::NodeLinks wanted = notArchived(nodes);
    Nodes::NodesCollection *project = workspace.session().project();
    if (!project || wanted.empty())
        return workspace.tell(Workspace::Info, nodes.empty() ? tr("Выберите строки сигналов.")
                                                             : tr("Все они уже в архиве."));
    const auto *group = first<archiverGroup>(*project);
    auto *archiver = first<Nodes::systemArchiver>(*project);
    if (!group && !archiver)
        return workspace.tell(Workspace::Warning, tr("В проекте нет архива. Создайте его: дерево "
                                                     "проекта, станция, «Создать», «Архив»."));
    QUndoCommand *command = nullptr;
    if (group) {
        Nodes::NodeLinks scope = group->GetScope();
        scope.insert(scope.end(), wanted.begin(), wanted.end());
        command = new Utils::ChangePropertyCommand(group->GetNodeLink(), archiverGroup::Prop::Scope,
                                                   scope);
    } else {
        command = makeGroup(*project, *archiver, wanted);
    }
    if (command)
        command->setText(tr("Архивирование сигналов"));
    if (workspace.push(command))
        workspace.tell(Workspace::Info, tr("В архив добавлено сигналов: %1.").arg(wanted.size()));
}

} // namespace Editor::ArchiveGroups
