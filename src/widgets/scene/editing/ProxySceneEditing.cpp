// Edits of the selected elements as undoable steps, and the clipboard.
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/editing/ActionFactory.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CopyNodeWidgetGroupCommand.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMetaMethod>

#include <algorithm>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(editorLog, "station.editor")

/// Lets go of nodes that the project holds for nobody.
void discard(Nodes::NodesCollection &project, const Nodes::NodeLinks &links)
{
    for (const Nodes::NodeLink &link : links)
        (void)project.TakeClone(link);
}

} // namespace

void ProxyScene::createActions()
{
    const Utils::ActionFactory &factory = Utils::ActionFactory::getInstance();
    m_deleteAction = factory.createAction(Utils::ActionFactory::ActionDelete, this);
    m_copyAction = factory.createAction(Utils::ActionFactory::ActionCopy, this);
    m_pasteAction = factory.createAction(Utils::ActionFactory::ActionPaste, this);
    if (m_deleteAction)
        connect(m_deleteAction, &QAction::triggered, this, &ProxyScene::removeWidget);
    if (m_copyAction)
        connect(m_copyAction, &QAction::triggered, this, &ProxyScene::onCopyToBuffer);
    if (m_pasteAction)
        connect(m_pasteAction, &QAction::triggered, this,
                [this] { onPasteFromBuffer(m_pastePosition); });
}

QList<ProxyWidget *> ProxyScene::selectedHosts() const
{
    QList<ProxyWidget *> hosts;
    const QList<QGraphicsItem *> items = selectedItems();
    for (QGraphicsItem *item : items) {
        auto *host = dynamic_cast<ProxyWidget *>(item);
        if (host && host->getNode())
            hosts.append(host);
    }
    return hosts;
}

void ProxyScene::removeWidget()
{
    std::vector<Nodes::NodeLink> links;
    for (const ProxyWidget *host : selectedHosts())
        links.push_back(host->getNodeLink());
    if (links.empty())
        return;
    // Where nobody looks after references to the nodes, nobody else is going to delete them.
    if (isSignalConnected(QMetaMethod::fromSignal(&ProxyScene::signalCheckLink)))
        emit signalCheckLink(links);
    else
        slotWidgetDelete(links);
}

void ProxyScene::slotWidgetDelete(std::vector<Nodes::NodeLink> links)
{
    Nodes::NodeLinks removed;
    Nodes::NodeLink parent;
    for (const ProxyWidget *host : selectedHosts()) {
        const Nodes::NodeLink link = host->getNodeLink();
        if (std::find(links.begin(), links.end(), link) == links.end())
            continue;
        if (removed.empty())
            parent = Nodes::NodeLink(host->getNode()->GetParent());
        removed.push_back(link);
    }
    if (!removed.empty())
        pushToUndoStack(new Utils::RemoveNodeLinkGroup(parent, removed));
}

void ProxyScene::onCopyToBuffer()
{
    const Nodes::NodesCollection *project = m_node ? m_node->GetNodesCollection() : nullptr;
    Nodes::NodesContainer nodes;
    for (const ProxyWidget *host : selectedHosts())
        nodes.Add(host->getNodeLink());
    if (!project || nodes.empty())
        return;
    const std::string bytes = project->Serialize(nodes);
    QGuiApplication::clipboard()->setText(
        QString::fromLatin1(QByteArray::fromStdString(bytes).toHex()));
}

bool ProxyScene::readClipboard(Nodes::NodesContainer &nodes) const
{
    Nodes::NodesCollection *project = m_node ? m_node->GetNodesCollection() : nullptr;
    const QByteArray text = QGuiApplication::clipboard()->text().toLatin1();
    const QByteArray bytes = QByteArray::fromHex(text);
    // fromHex passes over what is no digit: any text would do.
    if (!project || bytes.isEmpty() || bytes.toHex() != text.toLower())
        return false;
    const Nodes::Result read = project->Deserialize(bytes.toStdString(), nodes);
    if (!read)
        qCDebug(editorLog, "the clipboard has no elements: %s", read.ToString().c_str());
    return read && !nodes.empty();
}

bool ProxyScene::canPaste() const
{
    Nodes::NodesContainer nodes;
    const bool isReadable = readClipboard(nodes);
    if (isReadable)
        discard(*m_node->GetNodesCollection(), nodes.GetLinks());
    return isReadable;
}

void ProxyScene::onPasteFromBuffer(QPointF point)
{
    const QList<ProxyLayer *> top = getMaxZOrder();
    const Nodes::ConfigNode *layer = top.isEmpty() ? nullptr : top.first()->getNode();
    Nodes::NodesContainer nodes;
    if (!layer || !readClipboard(nodes))
        return;
    Nodes::NodesCollection &project = *m_node->GetNodesCollection();
    Nodes::NodesArray clones;
    const Nodes::Result cloned =
        project.CloneNodes(Nodes::NodesArray(nodes.GetLinks()), clones, true);
    discard(project, nodes.GetLinks());
    if (!cloned) {
        qCWarning(editorLog, "nothing pasted: %s", cloned.ToString().c_str());
        return;
    }
    clearSelection(); // what is pasted appears selected
    pushToUndoStack(new Utils::CopyNodeWidgetGroupCommand(Nodes::NodeLink(layer), clones,
                                                          QPoint(int(point.x()), int(point.y()))));
    discard(project, clones.GetLinks()); // those refused; the command has logged why
}

void ProxyScene::onMoveFinished()
{
    const QList<ProxyWidget *> hosts = selectedHosts();
    if (hosts.size() == 1) {
        pushToUndoStack(hosts.first()->getGeometryChangeCommand(nullptr));
        return;
    }
    auto group = std::make_unique<QUndoCommand>(QStringLiteral("Изменение координат виджетов"));
    for (ProxyWidget *host : hosts)
        (void)host->getGeometryChangeCommand(group.get());
    if (group->childCount() > 0)
        pushToUndoStack(group.release());
}

void ProxyScene::onPropertiesChange(ProxyWidget *widget, bool &movable, bool &push)
{
    auto group = std::make_unique<QUndoCommand>();
    const QUndoCommand *change =
        widget->getIsMoviedPropertiesChangeCommand(group.get(), movable, push);
    group->setText(change->text());
    if (push)
        pushToUndoStack(group.release());
}

void ProxyScene::moveOrder(int step)
{
    const QList<ProxyWidget *> hosts = selectedHosts();
    auto group = std::make_unique<QUndoCommand>(QStringLiteral("Изменение порядка виджетов"));
    for (const ProxyWidget *host : hosts) {
        const int order = host->getNode()->GetZOrder() + step;
        const auto *change = new Utils::ChangePropertyCommand(
            host->getNodeLink(), Nodes::BasicWidget::Prop::ZOrder, order, group.get());
        if (hosts.size() == 1)
            group->setText(change->text());
    }
    if (!hosts.isEmpty())
        pushToUndoStack(group.release());
}

void ProxyScene::upZValue()
{
    moveOrder(1);
}

void ProxyScene::downZValue()
{
    moveOrder(-1);
}

} // namespace Widgets
