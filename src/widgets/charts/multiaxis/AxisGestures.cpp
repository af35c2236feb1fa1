#include "widgets/charts/multiaxis/AxisGestures.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <QApplication>
#include <QChildEvent>
#include <QMouseEvent>

#include <cmath>

namespace Widgets {

namespace {

constexpr double zoomPerNotch = 1.25;

double along(QwtAxisId axis, const QPointF &point)
{
    return axis.isXAxis() ? point.x() : point.y();
}

} // namespace

AxisGestures::AxisGestures(MultiAxisPlot *plot) : QObject(plot), m_plot(plot)
{
    plot->installEventFilter(this);
    for (QObject *child : plot->children())
        watch(child);
}

void AxisGestures::watch(QObject *child)
{
    if (auto *scale = qobject_cast<QwtScaleWidget *>(child)) {
        scale->removeEventFilter(this);
        scale->installEventFilter(this);
        const QwtAxisId axis = m_plot->axisOf(scale);
        const bool listens = axis.pos < 0 || m_enabled[axis.pos];
        const bool isUpright =
            axis.isYAxis() || (axis.pos < 0 && scale->scaleDraw()->orientation() == Qt::Vertical);
        if (listens)
            scale->setCursor(isUpright ? Qt::SizeVerCursor : Qt::SizeHorCursor);
        else
            scale->unsetCursor();
    }
}

void AxisGestures::setEnabled(int position, bool on)
{
    if (!QwtAxis::isValid(position))
        return;
    m_enabled[position] = on;
    for (QObject *child : m_plot->children())
        watch(child);
}

bool AxisGestures::isEnabled(int position) const
{
    return QwtAxis::isValid(position) && m_enabled[position];
}

QwtAxisId AxisGestures::listeningAxis(QObject *watched) const
{
    const QwtAxisId axis = m_plot->axisOf(qobject_cast<QwtScaleWidget *>(watched));
    return axis.pos >= 0 && m_enabled[axis.pos] ? axis : QwtAxisId();
}

bool AxisGestures::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_plot) {
        // A widget is polished when it is whole; a child that is just added is not.
        if (event->type() == QEvent::ChildPolished)
            watch(static_cast<QChildEvent *>(event)->child());
        return false;
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        break;
    default:
        return false; // such come also while the plot is taken apart
    }
    const QwtAxisId axis = listeningAxis(watched);
    return axis.pos >= 0 && handle(axis, event);
}

bool AxisGestures::handle(QwtAxisId axis, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(axis, *static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return move(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return release(*static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonDblClick:
        return doubleClick(axis, *static_cast<QMouseEvent *>(event));
    default:
        return turn(axis, *static_cast<QWheelEvent *>(event));
    }
}

double AxisGestures::canvasPixel(QwtAxisId axis, const QPoint &inScale) const
{
    const QWidget *scale = m_plot->axisWidget(axis);
    return along(axis, scale->pos() + inScale - m_plot->canvas()->pos());
}

bool AxisGestures::press(QwtAxisId axis, const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    m_dragged = axis;
    m_isMoving = false;
    m_lastPixel = canvasPixel(axis, event.pos());
    return true;
}

bool AxisGestures::move(const QMouseEvent &event)
{
    if (!m_plot->isAxisValid(m_dragged) || !(event.buttons() & Qt::LeftButton))
        return false;
    const double pixel = canvasPixel(m_dragged, event.pos());
    const double distance = pixel - m_lastPixel;
    // A click, also one of a trembling hand, takes nothing out of auto-scale.
    if (!m_isMoving && std::abs(distance) < QApplication::startDragDistance() / 2.0)
        return true;
    if (!m_isMoving)
        take(m_dragged);
    m_isMoving = true;
    m_lastPixel = pixel;
    const QwtScaleMap map = m_plot->canvasMap(m_dragged);
    show(m_dragged, map, map.p1() - distance, map.p2() - distance);
    return true;
}

bool AxisGestures::release(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || m_dragged.pos < 0)
        return false;
    m_dragged = QwtAxisId();
    m_isMoving = false;
    return true;
}

bool AxisGestures::doubleClick(QwtAxisId axis, const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || !m_doubleClick)
        return false;
    m_dragged = QwtAxisId();
    m_plot->setAxisAutoScale(axis, true);
    m_plot->replot();
    emit axisReleased(axis);
    return true;
}

bool AxisGestures::turn(QwtAxisId axis, const QWheelEvent &event)
{
    const double notches = event.angleDelta().y() / WheelUnitsPerNotch;
    if (notches == 0)
        return false;
    zoom(axis, notches, canvasPixel(axis, event.position().toPoint()));
    return true;
}

void AxisGestures::zoom(QwtAxisId axis, double notches, double pixel)
{
    if (!isEnabled(axis.pos) || !m_plot->isAxisValid(axis))
        return;
    take(axis);
    const double factor = std::pow(zoomPerNotch, -notches);
    const QwtScaleMap map = m_plot->canvasMap(axis);
    show(axis, map, pixel + (map.p1() - pixel) * factor, pixel + (map.p2() - pixel) * factor);
}

void AxisGestures::take(QwtAxisId axis)
{
    m_plot->setAxisAutoScale(axis, false);
    emit axisTaken(axis);
}

void AxisGestures::show(QwtAxisId axis, const QwtScaleMap &map, double firstPixel, double lastPixel)
{
    // Through the map: on a logarithmic scale equal distances are equal factors.
    const double from = map.invTransform(firstPixel);
    const double to = map.invTransform(lastPixel);
    const double smallest = 1e-12 * qMax(std::abs(from), std::abs(to));
    if (!std::isfinite(from) || !std::isfinite(to) || std::abs(to - from) <= smallest)
        return; // zoomed in or out as far as numbers go
    m_plot->setAxisScale(axis, from, to);
    m_plot->replot();
    emit axisMoved(axis, from, to);
}

} // namespace Widgets
