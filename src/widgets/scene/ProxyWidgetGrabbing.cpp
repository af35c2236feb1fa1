// How an element is resized by its grabbers, and bound by what is dropped on it.
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/CornerGrabber.h"
#include "widgets/scene/editing/DraggedNodes.h"
#include "widgets/scene/editing/EditedScene.h"
#include "widgets/scene/editing/ElementEditor.h"

#include "nodes/visual/BasicWidget.h"
#include "utils/undo/DropNodesCommand.h"

#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneMouseEvent>

#include <memory>

namespace Widgets {

namespace {

Nodes::ConfigNode::enDropFlags dropFlags(bool isCopy)
{
    return isCopy ? Nodes::ConfigNode::DropCopy : Nodes::ConfigNode::DropLink;
}

} // namespace

bool ProxyWidget::sceneEventFilter(QGraphicsItem *watched, QEvent *event)
{
    auto *grabber = qgraphicsitem_cast<CornerGrabber *>(watched);
    if (!grabber)
        return QGraphicsProxyWidget::sceneEventFilter(watched, event);
    if (event->type() == QEvent::UngrabMouse) {
        grabber->setMouseState(CornerGrabber::Idle);
        if (EditedScene *edited = editedScene())
            edited->cancelDrag();
    }
    const auto *mouse = dynamic_cast<QGraphicsSceneMouseEvent *>(event);
    if (!mouse)
        return false;
    filterMouse(*grabber, *mouse);
    event->accept();
    return true;
}

void ProxyWidget::filterMouse(CornerGrabber &grabber, const QGraphicsSceneMouseEvent &event)
{
    EditedScene *edited = editedScene();
    // Of an item that was moved since it was painted, Qt gives the place where it was then.
    const QPointF place = event.widget() ? event.scenePos() : grabber.mapToScene(event.pos());
    switch (event.type()) {
    case QEvent::GraphicsSceneMousePress:
    case QEvent::GraphicsSceneMouseDoubleClick:
        grabber.setMouseState(CornerGrabber::Pressed);
        grabber.setPressPosition(place);
        if (edited)
            edited->takePressed(*this);
        break;
    case QEvent::GraphicsSceneMouseMove:
        grabber.setMouseState(CornerGrabber::Dragging);
        if (edited)
            edited->drag({this, grabber.corner(), grabber.pressPosition(), place});
        break;
    case QEvent::GraphicsSceneMouseRelease:
        grabber.setMouseState(CornerGrabber::Idle);
        commitResize();
        break;
    default:
        break;
    }
}

// One element, however many are selected: its own step.
void ProxyWidget::commitResize()
{
    EditedScene *edited = editedScene();
    if (!edited)
        return;
    edited->finishDrag();
    edited->commit(getGeometryChangeCommand(nullptr));
    takeRefusal();
}

Nodes::NodesArray ProxyWidget::getNaFromMineDate(const QMimeData *mime) const
{
    const Nodes::NodesCollection *project = m_link.GetNodesCollection();
    return mime && project ? DraggedNodes::read(*project, *mime) : Nodes::NodesArray();
}

void ProxyWidget::dragEnterEvent(QGraphicsSceneDragDropEvent *event)
{
    const Nodes::BasicWidget *node = getNode();
    if (m_context->isRuntime() || !node) {
        QGraphicsProxyWidget::dragEnterEvent(event);
        return;
    }
    const Nodes::NodesArray nodes = getNaFromMineDate(event->mimeData());
    const bool isCopy = event->modifiers() & Qt::ControlModifier;
    const bool isAcceptable = node->CanDropNodes(nodes, dropFlags(isCopy)).IsSuccess();
    editor().showDrop(isAcceptable);
    event->setAccepted(isAcceptable);
    EditedScene *edited = isAcceptable ? nullptr : editedScene();
    if (edited)
        edited->takeRefused(*this);
}

void ProxyWidget::hideDrop()
{
    if (m_editor)
        (void)m_editor->hideDrop();
}

void ProxyWidget::dragLeaveEvent(QGraphicsSceneDragDropEvent *event)
{
    if (m_context->isRuntime())
        QGraphicsProxyWidget::dragLeaveEvent(event);
    else
        (void)editor().hideDrop();
}

// Whether it is taken was settled when it entered.
void ProxyWidget::dragMoveEvent(QGraphicsSceneDragDropEvent *event)
{
    if (m_context->isRuntime())
        QGraphicsProxyWidget::dragMoveEvent(event);
}

void ProxyWidget::dropEvent(QGraphicsSceneDragDropEvent *event)
{
    if (m_context->isRuntime()) {
        QGraphicsProxyWidget::dropEvent(event);
        return;
    }
    event->ignore();
    EditedScene *edited = editedScene();
    if (!editor().hideDrop() || !edited)
        return;
    const bool isCopy = event->modifiers() & Qt::ShiftModifier;
    edited->commit(new Utils::DropNodesCommand(m_link, getNaFromMineDate(event->mimeData()),
                                               dropFlags(isCopy)));
}

} // namespace Widgets
