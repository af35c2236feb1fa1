#include "widgets/reports/engine/preview/PageView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <cmath>

namespace LimeReport {

namespace {

constexpr double ZoomStep = 1.2;

} // namespace

void PageView::resizeEvent(QResizeEvent *event)
{
    QAbstractScrollArea::resizeEvent(event);
    if (!m_pages)
        return;
    applyFit();
    layOut();
    updateCurrent();
}

void PageView::scrollContentsBy(int dx, int dy)
{
    // Moves what is painted already: only the strip that comes into view is painted anew.
    viewport()->scroll(dx, dy);
    updateCurrent();
}

void PageView::wheelEvent(QWheelEvent *event)
{
    if (event->modifiers() & Qt::ControlModifier) {
        const double turns = event->angleDelta().y() / 120.0;
        setScalePercent(qRound(m_percent * std::pow(ZoomStep, turns)));
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

void PageView::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_PageUp:
        goTo(m_current - 1);
        break;
    case Qt::Key_PageDown:
        goTo(m_current + 1);
        break;
    case Qt::Key_Home:
        goTo(0);
        break;
    case Qt::Key_End:
        goTo(pageCount() - 1);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        setScalePercent(qRound(m_percent * ZoomStep));
        break;
    case Qt::Key_Minus:
        setScalePercent(qRound(m_percent / ZoomStep));
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isDragging = true;
    m_grip = event->pos();
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void PageView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isDragging)
        return;
    const QPoint moved = event->pos() - m_grip;
    m_grip = event->pos();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - moved.y());
}

void PageView::mouseReleaseEvent(QMouseEvent *event)
{
    m_isDragging = false;
    viewport()->setCursor(Qt::OpenHandCursor);
}

} // namespace LimeReport
