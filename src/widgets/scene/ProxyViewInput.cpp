// Zoom, pan and rubber band of a view whose scene is edited.
#include "widgets/context/SceneContext.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/editing/SceneEditor.h"

#include <QApplication>
#include <QGraphicsItem>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

constexpr double zoomStep = 1.15;

} // namespace

void ProxyView::mousePressEvent(QMouseEvent *event)
{
    if (canScroll() && event->button() == Qt::MiddleButton) {
        if (event->modifiers() == Qt::ControlModifier) {
            resetTransform();
        } else {
            setDragMode(NoDrag);
            setInteractive(false);
            m_lastX = event->x();
            m_lastY = event->y();
            QApplication::setOverrideCursor(Qt::ClosedHandCursor);
        }
    }
    QMouseEvent passed(*event);
    const bool isBand = beginsBand(*event);
    SceneEditor *tool = proxyScene() ? proxyScene()->sceneEditor() : nullptr;
    if (isBand && tool && event->modifiers() == Qt::NoModifier)
        tool->groups().forget();
    if (isBand && event->modifiers() == Qt::ShiftModifier)
        passed.setModifiers(Qt::ControlModifier); // the one by which a rubber band adds
    QGraphicsView::mousePressEvent(&passed);
    event->setAccepted(passed.isAccepted() && !context().isEditor());
}

bool ProxyView::beginsBand(const QMouseEvent &press) const
{
    if (!context().isEditor() || press.button() != Qt::LeftButton)
        return false;
    const QList<QGraphicsItem *> met = items(press.pos());
    return std::none_of(met.begin(), met.end(), [](const QGraphicsItem *item) {
        return item->flags() & QGraphicsItem::ItemIsSelectable;
    });
}

void ProxyView::mouseMoveEvent(QMouseEvent *event)
{
    if (!canScroll() || !(event->buttons() & Qt::MiddleButton)) {
        QGraphicsView::mouseMoveEvent(event);
        SceneEditor *tool = proxyScene() ? proxyScene()->sceneEditor() : nullptr;
        if (tool && !rubberBandRect().isNull())
            tool->groups().complete();
        return;
    }
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + m_lastX - event->x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + m_lastY - event->y());
    m_lastX = event->x();
    m_lastY = event->y();
    event->accept();
}

void ProxyView::mouseReleaseEvent(QMouseEvent *event)
{
    const bool isPanning = !isInteractive();
    if (event->button() == Qt::MiddleButton && isPanning) {
        setDragMode(context().isEditor() ? RubberBandDrag : NoDrag);
        setInteractive(true);
        QApplication::restoreOverrideCursor();
    }
    QGraphicsView::mouseReleaseEvent(event);
    if (context().isEditor())
        event->ignore();
}

// Whoever zooms, the view tells nobody.
void ProxyView::paintEvent(QPaintEvent *event)
{
    const double scale = transform().m11();
    ProxyScene *shown = proxyScene();
    if (shown && std::exchange(m_paintedScale, scale) != scale)
        shown->takeScale();
    QGraphicsView::paintEvent(event);
}

void ProxyView::wheelEvent(QWheelEvent *event)
{
    // Qt gives a wheel turned with Alt as horizontal motion.
    const int delta =
        event->angleDelta().y() != 0 ? event->angleDelta().y() : event->angleDelta().x();
    if (!canScroll()) {
        QGraphicsView::wheelEvent(event);
    } else if (event->modifiers() == Qt::ControlModifier) {
        zoom(delta >= 1, event->position().toPoint());
    } else if (event->modifiers() == Qt::AltModifier || event->modifiers() == Qt::NoModifier) {
        const bool isAcross = event->modifiers() == Qt::AltModifier;
        QScrollBar *bar = isAcross ? horizontalScrollBar() : verticalScrollBar();
        const int step = bar->maximum() / 10;
        bar->setValue(bar->value() + (delta < 1 ? step : -step));
    }
}

void ProxyView::zoom(bool isCloser, QPoint at)
{
    const double factor = isCloser ? zoomStep : 1 / zoomStep;
    const QPointF before = mapToScene(at);
    scale(factor, factor);
    const QPointF shift = before - mapToScene(at);
    const QPointF centre = mapToScene(viewport()->rect()).boundingRect().center();
    centerOn(centre + shift);
}

} // namespace Widgets
