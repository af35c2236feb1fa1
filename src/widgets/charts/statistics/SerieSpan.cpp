#include "widgets/charts/statistics/SerieSpan.h"

#include "widgets/charts/painting/CurveData.h"
#include "widgets/charts/series/qwidgetChartBasicSerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/HistoryColumn.h"
#include "nodes/charts/widgetChartBasicSerie.h"

#include <cmath>

#include <qwt_plot_curve.h>
#include <qwt_plot_intervalcurve.h>

namespace Widgets::SerieSpan {

namespace {

// Index of the last sample before x; 0 when there is none. By bisection: x ascends.
std::size_t before(const CurveData &data, double x)
{
    const std::size_t at = data.indexAt(x);
    return at > 0 ? at - 1 : 0;
}

} // namespace

SpanIntegrator::Join joinOf(const ISerie &serie)
{
    const auto *curve = dynamic_cast<const QwtPlotCurve *>(&serie);
    return curve && curve->style() == QwtPlotCurve::Steps ? SpanIntegrator::Join::Steps
                                                          : SpanIntegrator::Join::Lines;
}

double heldUntil(const ISerie &serie)
{
    const auto *line = dynamic_cast<const qwidgetChartBasicSerie *>(&serie);
    const bool isJoined =
        line && (line->style() == QwtPlotCurve::Lines || line->style() == QwtPlotCurve::Steps);
    return isJoined && line->isLive() ? line->heldUntil() : SpanStatistics::None;
}

std::optional<SpanStatistics> ofDrawn(const ISerie &serie, double from, double to)
{
    const auto *curve = dynamic_cast<const QwtPlotCurve *>(&serie);
    const auto *data = curve ? dynamic_cast<const CurveData *>(curve->data()) : nullptr;
    if (!data || !data->isSorted())
        return {};
    SpanIntegrator sums(from, to, joinOf(serie));
    const double last = std::max(from, to);
    for (std::size_t i = before(*data, std::min(from, to)); i < data->size(); ++i) {
        const QPointF point = data->sample(i);
        sums.add(point.x(), point.y() - double(serie.getOffsetY()), data->quality(i));
        if (point.x() > last)
            break;
    }
    sums.hold(heldUntil(serie));
    SpanStatistics found = sums.finish();
    found.isApproximate = serie.hasArchiverSource();
    return found;
}

SpanStatistics ofArchive(const ISerie &serie, const Nodes::HistoryColumn &column, double from,
                         double to)
{
    SpanIntegrator sums(from, to, joinOf(serie));
    for (std::size_t i = 0; i < column.times.size(); ++i) {
        const double x = ChartTime::toX(column.times[i]);
        // An aggregate of one sample is that sample.
        if (!column.intervals.empty() && column.intervals[i].count > 1)
            sums.addAggregate(x, ChartTime::toX(column.intervals[i].end), column.intervals[i]);
        else
            sums.add(x, column.numbers[i], column.qualities[i]);
    }
    sums.hold(heldUntil(serie));
    return sums.finish();
}

std::optional<double> valueAt(const ISerie &serie, double x)
{
    const auto *curve = dynamic_cast<const QwtPlotCurve *>(&serie);
    const auto *data = curve ? dynamic_cast<const CurveData *>(curve->data()) : nullptr;
    if (!data || !data->isSorted() || data->size() == 0)
        return {};
    const std::size_t at = data->indexAt(x);
    const double offset = double(serie.getOffsetY());
    if (at < data->size() && data->sample(at).x() == x && data->isDrawn(at))
        return data->sample(at).y() - offset;
    if (at == 0 || !data->isDrawn(at - 1))
        return {};
    const QPointF left = data->sample(at - 1);
    if (at == data->size())
        return x <= heldUntil(serie) ? std::optional(left.y() - offset) : std::nullopt;
    if (joinOf(serie) == SpanIntegrator::Join::Steps)
        return left.y() - offset;
    if (!data->isDrawn(at))
        return {};
    const QPointF right = data->sample(at);
    return left.y() + (right.y() - left.y()) * (x - left.x()) / (right.x() - left.x()) - offset;
}

} // namespace Widgets::SerieSpan
