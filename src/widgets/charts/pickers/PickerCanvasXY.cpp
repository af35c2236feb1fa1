#include "widgets/charts/pickers/PickerCanvasXY.h"

#include "widgets/charts/pickers/CursorLook.h"
#include "widgets/charts/series/qwidgetChartBasicSerie.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <qwt_plot.h>

namespace Widgets {

// Its own index search: along a loop the nearest in x may be far away.
void PickerCanvasXY::select(const QPointF &pos)
{
    std::vector<CursorReading> readings;
    for (QwtPlotItem *item : plot()->itemList()) {
        auto *serie = dynamic_cast<qwidgetChartBasicSerie *>(item);
        if (!serie || !serie->isVisible())
            continue;
        double distance = 0;
        const int index = serie->closestPoint(pos.toPoint(), &distance);
        if (index < 0 || distance > Reach)
            continue;
        CursorReading reading;
        reading.serie = serie;
        reading.point = serie->sample(index);
        readings.push_back(reading);
    }
    setReadings(std::move(readings), std::nullopt);
    createMarkers();
}

void PickerCanvasXY::createMarkers()
{
    clearMarkers();
    m_points.clear();
    for (const enCursor cursor : {FirstCursor, SecondCursor}) {
        m_drawn = cursor;
        for (const CursorReading &reading : readings(cursor)) {
            auto *serie = qobject_cast<qwidgetChartBasicSerie *>(reading.serie.data());
            if (serie && serie->plot() == plot())
                appendMarker(serie, reading.point);
        }
    }
    if (!m_points.empty())
        addMarker(new CursorLabels(m_points, {}));
    emit replot();
}

void PickerCanvasXY::appendMarker(qwidgetChartBasicSerie *serie, QPointF point)
{
    const QString label = QStringLiteral("%1; %2").arg(
        QString::number(point.x(), 'g', 6),
        QString::number(point.y() - double(serie->getOffsetY()), 'g', 6));
    CursorMarker *marker = CursorLook::makePoint(*static_cast<const QwtPlotItem *>(serie),
                                                 serie->getColor(), point, label, m_drawn);
    m_points.push_back(marker);
    addMarker(marker);
}

} // namespace Widgets
