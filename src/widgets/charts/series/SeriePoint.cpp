#include "widgets/charts/series/SeriePoint.h"

#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/values/IntervalSample.h"
#include "nodes/values/SignalValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Widgets::SeriePoints {

namespace {

using Nodes::Quality;

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();

SeriePoint pointOf(double x, double y, Quality quality)
{
    if (!std::isfinite(y) || quality == Quality::Bad || quality == Quality::Stale)
        return {x, nothing, Quality::Bad};
    return {x, y, quality};
}

/// A number within an aggregate of which a part is bad is true itself, but not all there is.
SeriePoint partOf(double x, double y, Quality worst)
{
    const bool isPartlyBad = worst == Quality::Bad || worst == Quality::Stale;
    return pointOf(x, y, isPartlyBad ? Quality::Uncertain : worst);
}

void appendAggregate(std::vector<SeriePoint> &points, const Nodes::IntervalSample &sample,
                     double now)
{
    const double begin = ChartTime::toX(sample.begin);
    const double end = std::max(begin, std::min(ChartTime::toX(sample.end), now));
    if (!std::isfinite(sample.minimum)) {
        points.push_back({begin, nothing, Quality::Bad});
        return;
    }
    if (sample.count == 1) {
        points.push_back(partOf(begin, sample.last, sample.worst));
        return;
    }
    const double third = (end - begin) / 3;
    const bool isRising = !(sample.first > sample.last);
    points.push_back(partOf(begin, sample.first, sample.worst));
    points.push_back(
        partOf(begin + third, isRising ? sample.minimum : sample.maximum, sample.worst));
    points.push_back(partOf(end - third, isRising ? sample.maximum : sample.minimum, sample.worst));
    // Short of the next one's begin, which is its own time.
    points.push_back(partOf(std::max(end - third, end - 1), sample.last, sample.worst));
}

bool isBefore(const SeriePoint &a, const SeriePoint &b)
{
    return a.x < b.x;
}

bool isSame(const SeriePoint &a, const SeriePoint &b)
{
    return a.x == b.x && (a.y == b.y || (std::isnan(a.y) && std::isnan(b.y)));
}

double numberOf(const Nodes::IntervalSample &sample, Edge edge)
{
    switch (edge) {
    case Edge::Lower:
        return sample.minimum;
    case Edge::Upper:
        return sample.maximum;
    case Edge::Last:
        break;
    }
    return sample.last;
}

double timeOf(const Nodes::SignalHistoryResponse &response)
{
    const Nodes::IntervalSample *interval = response.getIntervalSample();
    return interval ? ChartTime::toX(interval->begin) : ChartTime::fromUtc(response.GetTime());
}

Quality qualityOf(const Nodes::SignalHistoryResponse &response)
{
    return response.GetValue().GetQuality();
}

} // namespace

SeriePoint ofValue(double x, const Nodes::SignalValue &value)
{
    return pointOf(x, value.ToDouble(), value.GetQuality());
}

std::vector<SeriePoint> ofAnswer(const std::vector<Nodes::SignalHistoryResponse> &answer,
                                 unsigned long signal, double now)
{
    std::vector<SeriePoint> points;
    for (const Nodes::SignalHistoryResponse &response : answer) {
        if (response.GetNodeId() != signal)
            continue;
        if (const Nodes::IntervalSample *interval = response.getIntervalSample())
            appendAggregate(points, *interval, now);
        else
            points.push_back(pointOf(timeOf(response), response.ToDouble(), qualityOf(response)));
    }
    return points;
}

std::vector<SeriePoint> edgeOf(const std::vector<Nodes::SignalHistoryResponse> &answer,
                               unsigned long signal, Edge edge)
{
    std::vector<SeriePoint> points;
    for (const Nodes::SignalHistoryResponse &response : answer) {
        if (response.GetNodeId() != signal)
            continue;
        const double x = timeOf(response);
        if (const Nodes::IntervalSample *interval = response.getIntervalSample())
            points.push_back(partOf(x, numberOf(*interval, edge), interval->worst));
        else
            points.push_back(pointOf(x, response.ToDouble(), qualityOf(response)));
    }
    return points;
}

void sort(std::vector<SeriePoint> &points)
{
    std::stable_sort(points.begin(), points.end(), isBefore);
    points.erase(std::unique(points.begin(), points.end(), isSame), points.end());
}

bool insert(std::vector<SeriePoint> &points, const SeriePoint &point)
{
    const auto place = std::upper_bound(points.begin(), points.end(), point, isBefore);
    for (auto other = place; other != points.begin() && std::prev(other)->x == point.x; --other) {
        if (isSame(*std::prev(other), point))
            return false;
    }
    points.insert(place, point);
    return true;
}

} // namespace Widgets::SeriePoints
