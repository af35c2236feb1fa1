#include "editor/properties/children/ChildrenSteps.h"

#include "editor/properties/NewNode.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/MoveNodesCommand.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include <algorithm>
#include <memory>

namespace Editor {

namespace {

QString gone()
{
    return QStringLiteral("Узла больше нет в проекте.");
}

std::unique_ptr<Utils::CommandGroup> makeGroup(const QString &text, std::size_t count)
{
    return std::make_unique<Utils::CommandGroup>(
        count == 1 ? text : QStringLiteral("%1 (%2)").arg(text).arg(count));
}

Nodes::NodeLink behind(const Nodes::ConfigNode &parent, const Nodes::NodeLink &node)
{
    const Nodes::ConfigNode *next = parent.GetNodeAt(parent.IndexOf(node.GetNode()) + 1);
    return next ? Nodes::NodeLink(next) : Nodes::NodeLink();
}

} // namespace

QString ChildrenSteps::add(const Nodes::KindInfo &kind)
{
    const Nodes::ConfigNode *parent = m_parent.GetNode();
    if (!parent || !m_edits.readOnly().isEmpty())
        return parent ? m_edits.readOnly() : gone();
    const Nodes::NodeLink made = makeClone(kind.type, *parent);
    auto group =
        makeGroup(QStringLiteral("Добавление: %1").arg(QString::fromStdString(kind.nameRu)), 1);
    new Utils::AddNodeLinkCommand(made, m_parent, group.get());
    return m_edits.push(group.release());
}

QString ChildrenSteps::duplicate(const Nodes::NodeLinks &nodes)
{
    Nodes::ConfigNode *parent = m_parent.GetNode();
    if (nodes.empty() || !parent || !m_edits.readOnly().isEmpty())
        return parent ? m_edits.readOnly() : gone();
    Nodes::NodesArray clones;
    const Nodes::Result cloned =
        parent->GetNodesCollection()->CloneNodes(Nodes::NodesArray(nodes), clones, true);
    if (!cloned)
        return QString::fromStdString(cloned.GetResultTranslated());
    auto group = makeGroup(QStringLiteral("Дублирование"), nodes.size());
    const Nodes::NodeLink before = behind(*parent, nodes.back());
    for (const Nodes::NodeLink &clone : clones)
        new Utils::AddNodeLinkCommand(clone, m_parent, group.get());
    if (!before.isEmpty())
        new Utils::MoveNodesCommand(clones.GetLinks(), m_parent, before, group.get());
    return m_edits.push(group.release());
}

QString ChildrenSteps::remove(const Nodes::NodeLinks &nodes)
{
    if (nodes.empty())
        return m_edits.readOnly();
    auto group = makeGroup(QStringLiteral("Удаление"), nodes.size());
    new Utils::RemoveNodeLinkGroup(m_parent, nodes, group.get());
    return m_edits.push(group.release());
}

// The one that stands in the way is moved to the other end of the block.
QString ChildrenSteps::move(const Nodes::NodeLinks &all, const Nodes::NodeLinks &nodes, int by)
{
    const Nodes::ConfigNode *parent = m_parent.GetNode();
    if (nodes.empty() || !parent)
        return parent ? m_edits.readOnly() : gone();
    const auto first = std::find(all.begin(), all.end(), nodes.front());
    const auto last = std::find(all.begin(), all.end(), nodes.back());
    const bool isAtEnd = by < 0 ? first == all.begin() : last + 1 == all.end();
    if (isAtEnd)
        return m_edits.readOnly();
    const Nodes::NodeLink before = by < 0 ? *(first - 1) : behind(*parent, *(last + 1));
    auto group = makeGroup(QStringLiteral("Изменение порядка"), nodes.size());
    new Utils::MoveNodesCommand(nodes, m_parent, before, group.get());
    return m_edits.push(group.release());
}

} // namespace Editor
