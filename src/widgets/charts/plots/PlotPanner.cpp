#include "widgets/charts/plots/PlotPanner.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include <qwt_scale_div.h>
#include <qwt_scale_map.h>

#include <QKeyEvent>
#include <QMouseEvent>

namespace Widgets {

PlotPanner::PlotPanner(QWidget *canvas) : QwtPlotPanner(canvas) {}

MultiAxisPlot *PlotPanner::scales() const
{
    return const_cast<MultiAxisPlot *>(qobject_cast<const MultiAxisPlot *>(plot()));
}

void PlotPanner::setAxisEnabled(const QwtAxisId &axis, bool on)
{
    (axis.isXAxis() ? m_pansX : m_pansY) = on;
}

bool PlotPanner::isAxisEnabled(const QwtAxisId &axis) const
{
    return axis.isXAxis() ? m_pansX : m_pansY;
}

void PlotPanner::pan(int dx, int dy)
{
    emit panned(dx, dy);
}

// The base moves the first axis of each side and draws.
void PlotPanner::moveCanvas(int dx, int dy)
{
    const int x = m_pansX ? dx : 0;
    const int y = m_pansY ? dy : 0;
    if (x != 0 || y != 0)
        shiftExtraAxes(x, y);
    QwtPlotPanner::moveCanvas(x, y);
}

void PlotPanner::shiftExtraAxes(int dx, int dy)
{
    MultiAxisPlot *plot = scales();
    if (!plot)
        return;
    for (const QwtAxisId &axis : plot->axes()) {
        if (axis.id == 0)
            continue;
        const QwtScaleMap map = plot->canvasMap(axis);
        const QwtScaleDiv &division = plot->axisScaleDiv(axis);
        const int by = axis.isXAxis() ? dx : dy;
        plot->setAxisScale(axis, map.invTransform(map.transform(division.lowerBound()) - by),
                           map.invTransform(map.transform(division.upperBound()) - by));
    }
}

void PlotPanner::widgetMousePressEvent(QMouseEvent *event)
{
    Qt::MouseButton button = Qt::NoButton;
    Qt::KeyboardModifiers modifiers;
    getMouseButton(button, modifiers);
    MultiAxisPlot *plot = scales();
    if (!plot || event->button() != button || event->modifiers() != modifiers)
        return;
    m_isDragging = true;
    m_pressed = event->pos();
    m_moved = QPoint();
    m_before.clear();
    for (const QwtAxisId &axis : plot->axes())
        m_before.push_back({axis, plot->axisInterval(axis), plot->axisAutoScale(axis)});
}

void PlotPanner::widgetMouseMoveEvent(QMouseEvent *event)
{
    if (!m_isDragging)
        return;
    const QPoint moved = event->pos() - m_pressed;
    const QPoint step = moved - m_moved;
    if (step.isNull())
        return;
    m_moved = moved;
    moveCanvas(step.x(), step.y());
    emit QwtPanner::moved(moved.x(), moved.y());
}

// As one movement from where it began: that is what panned() means to whoever listens.
void PlotPanner::widgetMouseReleaseEvent(QMouseEvent *event)
{
    if (!m_isDragging)
        return;
    const QPoint moved = event->pos() - m_pressed;
    takeBack();
    if (!moved.isNull())
        emit panned(moved.x(), moved.y());
}

void PlotPanner::widgetKeyPressEvent(QKeyEvent *event)
{
    if (!m_isDragging || event->key() != Qt::Key_Escape)
        return;
    takeBack();
    scales()->replot();
}

void PlotPanner::takeBack()
{
    m_isDragging = false;
    MultiAxisPlot *plot = scales();
    if (!plot || m_moved.isNull())
        return;
    for (const Scale &scale : m_before) {
        plot->setAxisScale(scale.axis, scale.interval.minValue(), scale.interval.maxValue());
        plot->setAxisAutoScale(scale.axis, scale.isAutomatic);
    }
    plot->updateAxes();
}

} // namespace Widgets
