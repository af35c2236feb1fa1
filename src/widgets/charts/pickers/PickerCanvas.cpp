#include "widgets/charts/pickers/PickerCanvas.h"

#include "widgets/charts/pickers/CursorLook.h"
#include "widgets/charts/pickers/SampleSearch.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartTimeAxis.h"
#include "nodes/values/NumberText.h"

#include <cmath>

#include <qwt_plot.h>
#include <qwt_text.h>

namespace Widgets {

namespace {

QString qualityText(Nodes::Quality quality)
{
    if (quality == Nodes::Quality::Good)
        return {};
    return QStringLiteral(" (%1)").arg(QString::fromUtf8(Nodes::QualityName(quality)).toLower());
}

} // namespace

void PickerCanvas::select(const QPointF &pos)
{
    const int column = int(pos.x());
    const double x = plot()->invTransform(QwtPlot::xBottom, column);
    std::vector<CursorReading> readings;
    std::optional<double> nearest;
    for (QwtPlotItem *item : plot()->itemList()) {
        auto *serie = dynamic_cast<ISerie *>(item);
        if (!serie)
            continue;
        if (const auto reading = SampleSearch::at(*serie, column)) {
            readings.push_back(*reading);
            if (!nearest || std::abs(reading->point.x() - x) < std::abs(*nearest - x))
                nearest = reading->point.x();
        }
    }
    setReadings(std::move(readings), nearest);
    createMarkers();
}

void PickerCanvas::createMarkers()
{
    clearMarkers();
    std::vector<const CursorMarker *> points;
    std::vector<const CursorLine *> lines;
    for (const enCursor cursor : {FirstCursor, SecondCursor}) {
        for (const CursorReading &reading : readings(cursor))
            if (reading.serie && reading.serie->plot() == plot())
                points.push_back(addPoint(cursor, reading));
        if (position(cursor))
            lines.push_back(addLine(cursor));
    }
    if (!points.empty())
        addMarker(new CursorLabels(std::move(points), std::move(lines)));
    emit replot();
}

const CursorMarker *PickerCanvas::addPoint(enCursor cursor, const CursorReading &reading)
{
    CursorMarker *marker =
        CursorLook::makePoint(dynamic_cast<const QwtPlotItem &>(*reading.serie),
                              reading.serie->getColor(), reading.point, label(reading), cursor);
    addMarker(marker);
    return marker;
}

const CursorLine *PickerCanvas::addLine(enCursor cursor)
{
    auto *line = new CursorLine(QStringLiteral("line-marker"));
    line->setLineStyle(QwtPlotMarker::VLine);
    line->setLinePen(CursorLook::linePen(cursor));
    line->setXValue(*position(cursor));
    if (isTimeAxis(cursor)) {
        QwtText time(ChartTime::text(*position(cursor), QStringLiteral("hh:mm:ss")),
                     QwtText::PlainText);
        time.setColor(Qt::black);
        time.setBackgroundBrush(QColor(255, 255, 255, 220));
        line->setLabel(time);
    }
    line->setLabelAlignment(Qt::AlignLeft | Qt::AlignBottom);
    line->setLabelOrientation(Qt::Vertical);
    line->setZ(40);
    addMarker(line);
    return line;
}

bool PickerCanvas::isTimeAxis(enCursor cursor) const
{
    for (const CursorReading &reading : readings(cursor)) {
        const Nodes::ConfigNode *node = reading.serie ? reading.serie->getNode() : nullptr;
        const auto *group =
            node ? dynamic_cast<const Nodes::widgetChartGroup *>(node->GetParent()) : nullptr;
        if (!group)
            continue;
        const Nodes::NodesContainer axes = group->GetXAxes();
        return !axes.empty() &&
               dynamic_cast<const Nodes::widgetChartTimeAxis *>(axes.begin()->GetNode());
    }
    return false;
}

QString PickerCanvas::number(const CursorReading &reading, double y)
{
    const Nodes::widgetChartBasicSerie *node = reading.serie->getNode();
    return QString::fromStdString(Nodes::FormatFixed(y - double(reading.serie->getOffsetY()),
                                                     node ? node->GetDecimals() : 1));
}

QString PickerCanvas::label(const CursorReading &reading) const
{
    const QString value = number(reading, reading.point.y());
    if (reading.range)
        return QStringLiteral("%1 [%2, %3]")
                   .arg(value, number(reading, reading.range->first),
                        number(reading, reading.range->second)) +
               qualityText(reading.quality);
    const Nodes::widgetChartBasicSerie *node = reading.serie->getNode();
    const QString unit = node ? QString::fromStdString(node->GetUnit()) : QString();
    return QStringLiteral("%1 %2").arg(value, unit).trimmed() + qualityText(reading.quality);
}

} // namespace Widgets
