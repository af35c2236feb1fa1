#include "editor/tree/NodeEdits.h"

#include "editor/project/ProjectSession.h"
#include "editor/properties/NewNode.h"
#include "editor/sceneview/PasteReportDialog.h"
#include "editor/usages/Removal.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/MoveNodesCommand.h"
#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/groups/GroupEdits.h"
#include "widgets/scene/editing/paste/PasteReport.h"

#include <algorithm>
#include <optional>

namespace Editor {

namespace {

QString nameOf(const Nodes::NodeLink &node)
{
    return QString::fromStdString(node.GetLinkName());
}

bool standsBelow(const Nodes::ConfigNode *node, const Nodes::ConfigNode *above)
{
    while (node && node != above)
        node = node->GetParent();
    return node != nullptr;
}

Nodes::NodeLink nextSibling(const Nodes::NodeLink &link)
{
    const Nodes::ConfigNode *node = link.GetNode();
    const Nodes::ConfigNode *parent = node ? node->GetParent() : nullptr;
    return Nodes::NodeLink(parent ? parent->GetNodeAt(parent->IndexOf(node) + 1) : nullptr);
}

/// Children of one parent as they are to stand after those that are marked went one place up or
/// down, with a command for each that passes another.
void shiftChildren(const Nodes::ConfigNode &parent, const Nodes::NodeLinks &nodes, bool isUp,
                   QUndoCommand *group)
{
    Nodes::NodeLinks order = parent.GetNodes();
    std::vector<bool> isMoving;
    for (const Nodes::NodeLink &child : order)
        isMoving.push_back(std::find(nodes.begin(), nodes.end(), child) != nodes.end());
    const int count = int(order.size());
    for (int step = 1; step < count; ++step) {
        const auto low = std::size_t(isUp ? step : count - step); // the lower one of the two
        const std::size_t high = low - 1;
        const std::size_t moving = isUp ? low : high;
        if (!isMoving[moving] || isMoving[isUp ? high : low])
            continue;
        new Utils::MoveNodesCommand({order[low]}, Nodes::NodeLink(&parent), order[high], group);
        std::swap(order[low], order[high]);
        std::iter_swap(isMoving.begin() + long(low), isMoving.begin() + long(high));
    }
}

} // namespace

NodeEdits::NodeEdits(Workspace &workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace)
{
}

NodeEdits::~NodeEdits() = default;

bool NodeEdits::isAllowed() const
{
    return !m_workspace.session().isReadOnly();
}

bool NodeEdits::push(QUndoCommand *command)
{
    return m_workspace.push(command);
}

bool NodeEdits::refuse(const QString &what, const Nodes::Result &why)
{
    m_workspace.tell(Workspace::Warning, ProjectSession::explain(what, why));
    return false;
}

bool NodeEdits::rename(const Nodes::NodeLink &node, const QString &name)
{
    const std::string wanted = name.trimmed().toStdString();
    if (node.GetLinkName() == wanted)
        return true;
    return push(new Utils::ChangeTextCommand(node, Utils::ChangeTextCommand::Name, wanted));
}

bool NodeEdits::describe(const Nodes::NodeLink &node, const QString &text)
{
    return push(new Utils::ChangeTextCommand(node, Utils::ChangeTextCommand::Description,
                                             text.toStdString()));
}

Nodes::NodeLink NodeEdits::create(Nodes::NodeType type, const Nodes::NodeLink &parent)
{
    Nodes::NodesCollection *project = parent.GetNodesCollection();
    const Nodes::ConfigNode *above = parent.GetNode();
    if (!project || !above)
        return {};
    const Nodes::NodeLink made = makeClone(type, *above);
    if (!made.isValid())
        return {};
    auto *command = new Utils::AddNodeLinkCommand(made, parent);
    command->setText(QStringLiteral("Добавление узла %1").arg(nameOf(made)));
    push(command);
    (void)project->TakeClone(made); // one that was refused is nobody's, and gone with this
    return made.isValid() ? made : Nodes::NodeLink();
}

Nodes::Result NodeEdits::canTake(const Nodes::NodeLink &parent, const Nodes::NodeLinks &nodes,
                                 bool isCopy)
{
    const Nodes::ConfigNode *above = parent.GetNode();
    if (!above)
        return Nodes::Result(Nodes::Result::NotFound);
    for (const Nodes::NodeLink &link : nodes) {
        const Nodes::ConfigNode *node = link.GetNode();
        if (!node || (!isCopy && !node->GetParent()))
            return Nodes::Result(Nodes::Result::NotFound);
        if (!isCopy && standsBelow(above, node))
            return Nodes::Result(node, Nodes::Result::Cycle);
        const bool isHere = node->GetParent() == above;
        if (!isHere && !above->GetKind()->AllowsChild(node->GetNodeType()))
            return Nodes::Result(node, Nodes::Result::InvalidArgument);
    }
    return nodes.empty() ? Nodes::Result(Nodes::Result::NotFound) : Nodes::Result();
}

bool NodeEdits::takes(const Nodes::NodeLink &parent, const Nodes::NodeLinks &nodes,
                      bool isCopy) const
{
    return canTake(parent, nodes, isCopy).IsSuccess();
}

bool NodeEdits::move(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &parent,
                     const Nodes::NodeLink &before)
{
    const Nodes::Result allowed = canTake(parent, nodes, false);
    if (!allowed)
        return refuse(QStringLiteral("Узлы не перемещены"), allowed);
    return push(new Utils::MoveNodesCommand(nodes, parent, before));
}

Nodes::NodeLinks NodeEdits::insertCopies(const Nodes::NodesArray &copies,
                                         const Nodes::NodeLink &parent,
                                         const Nodes::NodeLink &before)
{
    if (parent.isValid())
        Widgets::GroupEdits::renew(copies, *parent.GetNode(), {});
    auto *group = new Utils::CommandGroup(
        copies.size() == 1 ? QStringLiteral("Копирование узла %1").arg(nameOf(copies[0]))
                           : QStringLiteral("Копирование группы узлов"));
    for (const Nodes::NodeLink &copy : copies)
        new Utils::AddNodeLinkCommand(copy, parent, group);
    if (before.isValid())
        new Utils::MoveNodesCommand(copies.GetLinks(), parent, before, group);
    push(group);
    Nodes::NodesCollection *project = parent.GetNodesCollection();
    Nodes::NodeLinks inserted;
    for (const Nodes::NodeLink &copy : copies) {
        (void)project->TakeClone(copy); // one that was refused is nobody's, and gone with this
        if (copy.isValid())
            inserted.push_back(copy);
    }
    return inserted;
}

Nodes::NodeLinks NodeEdits::copyTo(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &parent,
                                   const Nodes::NodeLink &before)
{
    Nodes::NodesArray copies;
    Nodes::Result done = canTake(parent, nodes, true);
    if (done)
        done = parent.GetNodesCollection()->CloneNodes(Nodes::NodesArray(nodes), copies, true);
    if (done) {
        std::vector<unsigned long> layers;
        for (const Nodes::NodeLink &node : nodes)
            layers.push_back(node->GetParent() ? node->GetParent()->GetId() : 0);
        Widgets::GroupEdits::tellApart(copies, layers);
        return insertCopies(copies, parent, before);
    }
    refuse(QStringLiteral("Узлы не скопированы"), done);
    return {};
}

std::optional<NodeEdits::Place> NodeEdits::placeNear(const Nodes::NodeLink &node,
                                                     const Nodes::NodeLinks &coming, bool isCopy)
{
    if (canTake(node, coming, isCopy))
        return Place{node, {}};
    const Nodes::NodeLink above(node.isValid() ? node->GetParent() : nullptr);
    if (canTake(above, coming, isCopy))
        return Place{above, nextSibling(node)};
    return std::nullopt;
}

Nodes::NodeLinks NodeEdits::moveNear(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &node)
{
    const std::optional<Place> place = placeNear(node, nodes, false);
    if (!place)
        refuse(QStringLiteral("Узлы не вставлены"), canTake(node, nodes, false));
    const bool isMoved = place && move(nodes, place->parent, place->before);
    return isMoved ? nodes : Nodes::NodeLinks();
}

Nodes::NodeLinks NodeEdits::pasteNear(const Nodes::NodeLink &node)
{
    Nodes::NodesCollection *project = node.GetNodesCollection();
    if (!project)
        return {};
    Widgets::PasteReport report;
    const Nodes::NodesArray clones = Widgets::ElementClipboard::take(*project, report);
    if (clones.empty()) {
        m_workspace.tell(Workspace::Warning, report.isFailure()
                                                 ? report.summary()
                                                 : QStringLiteral("В буфере обмена нет узлов"));
        return {};
    }
    const std::optional<Place> place = placeNear(node, clones.GetLinks(), true);
    if (place) {
        const Nodes::NodeLinks inserted = insertCopies(clones, place->parent, place->before);
        if (!inserted.empty())
            PasteReportDialog::tell(m_workspace, report); // of links that lead nowhere here
        return inserted;
    }
    refuse(QStringLiteral("Узлы не вставлены"), canTake(node, clones.GetLinks(), true));
    Widgets::ElementClipboard::discard(*project, clones.GetLinks());
    return {};
}

Nodes::NodeLinks NodeEdits::duplicate(const Nodes::NodeLinks &nodes)
{
    if (nodes.empty() || !nodes.back().isValid() || !nodes.back()->GetParent())
        return {};
    return copyTo(nodes, Nodes::NodeLink(nodes.back()->GetParent()), nextSibling(nodes.back()));
}

bool NodeEdits::shift(const Nodes::NodeLinks &nodes, bool isUp)
{
    auto *group = new Utils::CommandGroup(isUp ? QStringLiteral("Перемещение узлов выше")
                                               : QStringLiteral("Перемещение узлов ниже"));
    std::vector<const Nodes::ConfigNode *> parents;
    for (const Nodes::NodeLink &node : nodes) {
        const Nodes::ConfigNode *parent = node.isValid() ? node->GetParent() : nullptr;
        if (parent && std::find(parents.begin(), parents.end(), parent) == parents.end())
            parents.push_back(parent);
    }
    for (const Nodes::ConfigNode *parent : parents)
        shiftChildren(*parent, nodes, isUp, group);
    if (group->childCount() > 0)
        return push(group);
    delete group;
    return false;
}

bool NodeEdits::remove(const Nodes::NodeLinks &nodes)
{
    const std::optional<RemovalPlan> plan = askRemoval(m_workspace, nodes);
    return plan && push(makeRemoval(*plan));
}

} // namespace Editor
