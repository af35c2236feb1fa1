#include "widgets/charts/series/qwidgetChartHistorySerie.h"

#include "widgets/charts/series/SeriePoint.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/charts/widgetChartHistorySerie.h"

namespace Widgets {

qwidgetChartHistorySerie::qwidgetChartHistorySerie(Nodes::widgetChartHistorySerie *node,
                                                   QObject *parent)
    : qwidgetChartBasicSerie(node, parent)
{
    qwidgetChartHistorySerie::onUpdateProperties();
}

double qwidgetChartHistorySerie::shift() const
{
    const auto *node = dynamic_cast<Nodes::widgetChartHistorySerie *>(getNode());
    return node ? node->GetShift() : 0;
}

bool qwidgetChartHistorySerie::isLive() const
{
    return !(shift() > 0) && qwidgetChartBasicSerie::isLive();
}

void qwidgetChartHistorySerie::onUpdateProperties()
{
    QPen pen = PlotCurve::pen();
    pen.setStyle(shift() > 0 ? Qt::DashLine : Qt::SolidLine);
    setPen(pen);
    qwidgetChartBasicSerie::onUpdateProperties();
}

void qwidgetChartHistorySerie::updateArchPoints(
    const std::vector<Nodes::SignalHistoryResponse> &answer)
{
    if (!(shift() > 0)) {
        qwidgetChartBasicSerie::updateArchPoints(answer);
        return;
    }
    const unsigned long signal = archivedSignal();
    if (signal == 0)
        return;
    std::vector<SeriePoint> points = SeriePoints::ofAnswer(answer, signal, ChartTime::now());
    for (SeriePoint &point : points)
        point.x += shift();
    merge(points);
}

} // namespace Widgets
