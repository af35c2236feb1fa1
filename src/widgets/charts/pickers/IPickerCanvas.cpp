#include "widgets/charts/pickers/IPickerCanvas.h"

#include "widgets/charts/pickers/CursorRelay.h"
#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

#include <utility>

#include <qwt_plot.h>
#include <qwt_plot_item.h>

namespace Widgets {

IPickerCanvas::IPickerCanvas(QwtPlot *plot) : QObject(plot), m_relay(&CursorRelay::of(*plot))
{
    m_longPress.setSingleShot(true);
    m_longPress.setInterval(LongPress);
    connect(&m_longPress, &QTimer::timeout, this, &IPickerCanvas::onLongPress);
    plot->canvas()->installEventFilter(this);
    m_relay->setPicker(this);
}

IPickerCanvas::~IPickerCanvas()
{
    IPickerCanvas::clearMarkers();
    for (auto &position : m_positions)
        position.reset();
    if (QwtPlot *served = plot())
        for (QwtPlotItem *item : served->itemList())
            if (auto *serie = dynamic_cast<ISerie *>(item))
                serie->setCursor(std::nullopt);
    if (m_relay && m_relay->picker() == this)
        m_relay->setPicker(nullptr);
}

QwtPlot *IPickerCanvas::plot() const
{
    return qobject_cast<QwtPlot *>(parent());
}

void IPickerCanvas::clearMarkers()
{
    const QwtPlot *served = plot();
    const QwtPlotItemList attached = served ? served->itemList() : QwtPlotItemList();
    for (QwtPlotItem *marker : std::exchange(m_markers, {}))
        if (attached.contains(marker)) // else the plot has deleted it with its other items
            delete marker;
}

void IPickerCanvas::addMarker(QwtPlotItem *marker)
{
    m_markers.push_back(marker);
    marker->attach(plot());
}

bool IPickerCanvas::eventFilter(QObject *watched, QEvent *event)
{
    const QwtPlot *served = plot();
    if (!served || watched != served->canvas())
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(*static_cast<QMouseEvent *>(event));
        return true;
    case QEvent::MouseMove:
        drag(*static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseButtonRelease:
        m_isHeld = false;
        m_longPress.stop();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void IPickerCanvas::press(const QMouseEvent &event)
{
    const bool isSecond = event.modifiers().testFlag(Qt::ShiftModifier) && m_first;
    m_pressed = event.localPos();
    m_isHeld = event.button() == Qt::LeftButton;
    place(isSecond ? SecondCursor : FirstCursor, m_pressed);
    if (m_isHeld && !isSecond && m_before)
        m_longPress.start();
}

void IPickerCanvas::drag(const QMouseEvent &event)
{
    if (!m_isHeld || !event.buttons().testFlag(Qt::LeftButton))
        return;
    const QPointF moved = event.localPos() - m_pressed;
    if (m_longPress.isActive() && moved.manhattanLength() < QApplication::startDragDistance())
        return; // a finger is never quite still
    m_longPress.stop();
    if (m_selecting == FirstCursor)
        m_first = event.localPos();
    select(event.localPos());
    tell();
}

void IPickerCanvas::onLongPress()
{
    splitLast();
}

void IPickerCanvas::place(enCursor cursor, const QPointF &pos)
{
    m_selecting = cursor;
    if (cursor == FirstCursor)
        m_before = std::exchange(m_first, pos);
    select(pos);
    tell();
}

void IPickerCanvas::splitLast()
{
    if (!m_before || !m_first)
        return;
    const QPointF first = *m_before; // moves with the next press
    const QPointF second = *m_first;
    place(FirstCursor, first);
    place(SecondCursor, second);
}

void IPickerCanvas::remove(enCursor cursor)
{
    m_selecting = cursor;
    setReadings({}, std::nullopt);
    if (cursor == FirstCursor) {
        m_first.reset();
        m_before.reset();
    }
    createMarkers();
    tell();
}

void IPickerCanvas::setReadings(std::vector<CursorReading> readings, std::optional<double> position)
{
    m_readings[m_selecting] = std::move(readings);
    m_positions[m_selecting] = position;
}

void IPickerCanvas::tell()
{
    if (QwtPlot *served = plot())
        for (QwtPlotItem *item : served->itemList())
            if (auto *serie = dynamic_cast<ISerie *>(item))
                serie->setCursor(m_positions[FirstCursor]);
    if (m_relay)
        emit m_relay->changed();
}

} // namespace Widgets
