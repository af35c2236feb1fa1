#include "editor/sceneview/EdgeScroll.h"

#include <QAbstractScrollArea>
#include <QScrollBar>
#include <QTimerEvent>

#include <utility>

namespace Editor {

namespace {

constexpr int interval = 30;     // ms
constexpr int greatestStep = 40; // pixels of the screen

/// Of a pointer beyond a range, 0 inside of it.
int stepOf(int at, int length)
{
    const int beyond = at < 0 ? at : qMax(0, at - length + 1);
    return qBound(-greatestStep, beyond / 2 + (beyond > 0) - (beyond < 0), greatestStep);
}

} // namespace

EdgeScroll::EdgeScroll(QAbstractScrollArea &view, std::function<bool()> isDragging)
    : m_view(view), m_isDragging(std::move(isDragging))
{
}

QPoint EdgeScroll::step() const
{
    const QSize size = m_view.viewport()->size();
    return {stepOf(m_pointer.x(), size.width()), stepOf(m_pointer.y(), size.height())};
}

void EdgeScroll::follow(const QPoint &pointer)
{
    m_pointer = pointer;
    if (step().isNull())
        m_timer.stop();
    else if (!m_timer.isActive())
        m_timer.start(interval, this);
}

void EdgeScroll::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QObject::timerEvent(event);
    if (!m_isDragging())
        return m_timer.stop();
    const QPoint by = step();
    QScrollBar *across = m_view.horizontalScrollBar();
    QScrollBar *down = m_view.verticalScrollBar();
    across->setValue(across->value() + by.x());
    down->setValue(down->value() + by.y());
}

} // namespace Editor
