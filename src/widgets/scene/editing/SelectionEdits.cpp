#include "widgets/scene/editing/SelectionEdits.h"

#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneSelection.h"

#include "nodes/visual/BasicWidget.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/IUndo.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include <memory>
#include <unordered_set>

namespace Widgets {

void SelectionEdits::remove(const Nodes::NodeLinks &links)
{
    std::unordered_set<unsigned long> allowed;
    for (const Nodes::NodeLink &link : links)
        allowed.insert(link.GetNodeId());
    Nodes::NodeLinks removed;
    Nodes::NodeLink parent;
    for (const ProxyWidget *host : m_selection.hosts()) {
        const Nodes::NodeLink link = host->getNodeLink();
        if (allowed.count(link.GetNodeId()) == 0)
            continue;
        if (removed.empty())
            parent = Nodes::NodeLink(host->getNode()->GetParent());
        removed.push_back(link);
    }
    if (!removed.empty())
        m_undo.pushToUndoStack(new Utils::RemoveNodeLinkGroup(parent, removed));
}

void SelectionEdits::commitGeometry(const Utils::Interaction &interaction)
{
    const QList<ProxyWidget *> hosts = m_selection.hosts();
    if (hosts.size() == 1) {
        std::unique_ptr<QUndoCommand> change(hosts.first()->getGeometryChangeCommand(nullptr));
        if (auto *step = dynamic_cast<Utils::NodeCommand *>(change.get()))
            step->setInteraction(interaction);
        m_undo.pushToUndoStack(change.release());
    } else {
        auto group =
            std::make_unique<Utils::CommandGroup>(QStringLiteral("Изменение координат виджетов"));
        for (ProxyWidget *host : hosts)
            (void)host->getGeometryChangeCommand(group.get());
        group->setInteraction(interaction);
        if (group->childCount() > 0)
            m_undo.pushToUndoStack(group.release());
    }
    for (ProxyWidget *host : hosts)
        host->takeRefusal();
}

bool SelectionEdits::takeBackMove()
{
    bool isTakenBack = false;
    for (ProxyWidget *host : m_selection.hosts())
        isTakenBack = host->takeBackMove() || isTakenBack;
    return isTakenBack;
}

void SelectionEdits::setMovable(ProxyWidget &host, bool &movable, bool &push)
{
    auto group = std::make_unique<Utils::CommandGroup>(QString());
    const QUndoCommand *change =
        host.getIsMoviedPropertiesChangeCommand(group.get(), movable, push);
    group->setText(change->text());
    if (push)
        m_undo.pushToUndoStack(group.release());
}

void SelectionEdits::moveOrder(int step)
{
    const QList<ProxyWidget *> hosts = m_selection.hosts();
    auto group =
        std::make_unique<Utils::CommandGroup>(QStringLiteral("Изменение порядка виджетов"));
    for (const ProxyWidget *host : hosts) {
        const int order = host->getNode()->GetZOrder() + step;
        const auto *change = new Utils::ChangePropertyCommand(
            host->getNodeLink(), Nodes::BasicWidget::Prop::ZOrder, order, group.get());
        if (hosts.size() == 1)
            group->setText(change->text());
    }
    if (!hosts.isEmpty())
        m_undo.pushToUndoStack(group.release());
}

} // namespace Widgets
