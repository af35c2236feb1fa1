// Which input reaches the element and which the editor.
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/EditedScene.h"
#include "widgets/scene/editing/ElementEditor.h"

#include <QCoreApplication>
#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QGraphicsView>

namespace Widgets {

void ProxyWidget::hoverEnterEvent(QGraphicsSceneHoverEvent *event)
{
    if (m_context->isRuntime())
        QGraphicsProxyWidget::hoverEnterEvent(event);
    else
        QGraphicsItem::hoverEnterEvent(event);
}

void ProxyWidget::hoverLeaveEvent(QGraphicsSceneHoverEvent *event)
{
    if (!m_context->isRuntime()) {
        QGraphicsItem::hoverLeaveEvent(event);
        return;
    }
    QGraphicsProxyWidget::hoverLeaveEvent(event);
    if (widget())
        setCursor(widget()->cursor());
}

void ProxyWidget::wheelEvent(QGraphicsSceneWheelEvent *event)
{
    if (m_context->isRuntime())
        QGraphicsProxyWidget::wheelEvent(event);
    else
        QGraphicsItem::wheelEvent(event);
}

void ProxyWidget::keyPressEvent(QKeyEvent *event)
{
    if (m_context->isRuntime())
        QGraphicsProxyWidget::keyPressEvent(event);
    else
        QGraphicsItem::keyPressEvent(event);
}

void ProxyWidget::keyReleaseEvent(QKeyEvent *event)
{
    if (m_context->isRuntime())
        QGraphicsProxyWidget::keyReleaseEvent(event);
    else
        QGraphicsItem::keyReleaseEvent(event);
}

void ProxyWidget::forwardToView(QGraphicsSceneMouseEvent *event)
{
    if (!scene())
        return;
    const QList<QGraphicsView *> views = scene()->views();
    for (QGraphicsView *view : views) {
        if (view->isActiveWindow())
            QCoreApplication::sendEvent(views.first(), event);
    }
}

void ProxyWidget::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    if (!m_context->isRuntime()) {
        const bool wasSelected = isSelected();
        QGraphicsItem::mousePressEvent(event);
        // One that is not movable would leave it to the rubber band, which ends the selection that
        // the menu is asked for.
        if (event->button() == Qt::RightButton && (flags() & ItemIsSelectable))
            event->accept();
        EditedScene *edited = isSelected() ? editedScene() : nullptr;
        if (edited && !wasSelected)
            edited->takePicked(*this);
        if (edited)
            edited->takePressed(*this);
        return;
    }
    QGraphicsProxyWidget::mousePressEvent(event);
    event->accept();
    forwardToView(event);
}

void ProxyWidget::mouseMoveEvent(QGraphicsSceneMouseEvent *event)
{
    if (m_context->isRuntime()) {
        QGraphicsProxyWidget::mouseMoveEvent(event);
        return;
    }
    const bool isHeld = (event->buttons() & Qt::LeftButton) && (flags() & ItemIsMovable);
    if (!editor().drags(*event) || !isHeld)
        return;
    if (EditedScene *edited = editedScene())
        edited->drag(
            {this, NoCorner, event->buttonDownScenePos(Qt::LeftButton), event->scenePos()});
    else
        QGraphicsItem::mouseMoveEvent(event);
}

void ProxyWidget::mouseReleaseEvent(QGraphicsSceneMouseEvent *event)
{
    if (m_context->isRuntime()) {
        forwardToView(event);
        QGraphicsProxyWidget::mouseReleaseEvent(event);
        return;
    }
    if (editor().endsDrag())
        emit movedFinished();
    QGraphicsItem::mouseReleaseEvent(event);
    // A click in place leaves the element alone selected, or lets it go.
    const bool isClick = event->button() == Qt::LeftButton && (flags() & ItemIsSelectable) &&
                         event->scenePos() == event->buttonDownScenePos(Qt::LeftButton);
    if (EditedScene *edited = isClick ? editedScene() : nullptr)
        edited->takePicked(*this);
}

// Accepted, so that the release which ends the double click comes here too.
void ProxyWidget::mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event)
{
    if (!m_context->isRuntime()) {
        QGraphicsItem::mouseDoubleClickEvent(event);
        const bool isPlain =
            event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
        if (EditedScene *edited = isPlain && isSelected() ? editedScene() : nullptr)
            edited->takeEntered(*this);
        return;
    }
    QGraphicsProxyWidget::mouseDoubleClickEvent(event);
    event->accept();
}

// The element hears that it will see no release of a press.
void ProxyWidget::ungrabMouseEvent(QEvent *event)
{
    QGraphicsProxyWidget::ungrabMouseEvent(event);
    if (m_context->isRuntime()) {
        if (widget())
            QCoreApplication::sendEvent(widget(), event);
        return;
    }
    (void)editor().endsDrag();
    if (EditedScene *edited = editedScene())
        edited->cancelDrag();
}

// The element hears that another one took the focus: what was entered is committed then.
void ProxyWidget::focusOutEvent(QFocusEvent *event)
{
    if (m_context->isRuntime())
        QGraphicsProxyWidget::focusOutEvent(event);
    else
        QGraphicsItem::focusOutEvent(event);
}

} // namespace Widgets
