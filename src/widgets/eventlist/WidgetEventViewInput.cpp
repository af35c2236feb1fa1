#include "widgets/eventlist/WidgetEventView.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QTimerEvent>

#include <utility>

namespace Widgets {

namespace {

constexpr int longPress = 600; // ms

} // namespace

void WidgetEventView::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid())
        emit activatedRow(currentIndex().row());
    else if (event->matches(QKeySequence::Copy))
        emit copyAsked();
    else
        QTableView::keyPressEvent(event);
}

void WidgetEventView::contextMenuEvent(QContextMenuEvent *event)
{
    const QModelIndex index = event->reason() == QContextMenuEvent::Keyboard
                                  ? currentIndex()
                                  : indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (index.isValid())
        setCurrentIndex(index);
    emit menuAsked(index.row(), event->globalPos());
    event->accept();
}

// A held finger stands for the right button, as long as it does not scroll.
void WidgetEventView::mousePressEvent(QMouseEvent *event)
{
    stopPress();
    QTableView::mousePressEvent(event);
    if (event->button() != Qt::LeftButton)
        return;
    m_pressed = event->pos();
    m_press = startTimer(longPress);
}

void WidgetEventView::mouseMoveEvent(QMouseEvent *event)
{
    if ((event->pos() - m_pressed).manhattanLength() > QApplication::startDragDistance())
        stopPress();
    QTableView::mouseMoveEvent(event);
}

void WidgetEventView::mouseReleaseEvent(QMouseEvent *event)
{
    stopPress();
    QTableView::mouseReleaseEvent(event);
}

void WidgetEventView::mouseDoubleClickEvent(QMouseEvent *event)
{
    stopPress();
    const QModelIndex index = indexAt(event->pos());
    if (index.isValid() && event->button() == Qt::LeftButton)
        emit activatedRow(index.row());
    event->accept();
}

void WidgetEventView::stopPress()
{
    if (m_press != 0)
        killTimer(std::exchange(m_press, 0));
}

void WidgetEventView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_press)
        return QTableView::timerEvent(event);
    stopPress();
    const QModelIndex index = indexAt(m_pressed);
    if (index.isValid())
        emit menuAsked(index.row(), viewport()->mapToGlobal(m_pressed));
}

void WidgetEventView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    emit currentRowChanged(current.row());
}

} // namespace Widgets
