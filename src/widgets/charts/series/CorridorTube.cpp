#include "widgets/charts/series/CorridorTube.h"

#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/values/IntervalSample.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Widgets {

namespace {

using Nodes::Quality;

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();

bool isKnown(const SeriePoint &point)
{
    return std::isfinite(point.y);
}

void trim(std::vector<SeriePoint> &points, double x)
{
    const auto first =
        std::lower_bound(points.begin(), points.end(), x,
                         [](const SeriePoint &point, double at) { return point.x < at; });
    if (first != points.begin())
        points.erase(points.begin(), std::prev(first));
}

} // namespace

void CorridorSlices::setWidth(double milliseconds)
{
    const double width = std::isfinite(milliseconds) ? std::max(milliseconds, 1.0) : 1.0;
    if (width != m_width)
        clear();
    m_width = width;
}

CorridorSlices::Slice &CorridorSlices::at(double x, double end)
{
    const double begin = std::floor(x / m_width) * m_width;
    const Slice empty{begin + m_width, x, nothing, nothing, 0, 0, Quality::Good};
    Slice &slice = m_slices.try_emplace(begin, empty).first->second;
    slice.end = std::max(slice.end, end);
    return slice;
}

// A gap leaves what the slice knows: it is a gap of its own only where nothing else is known.
void CorridorSlices::fold(Slice &slice, const SeriePoint &point, double lower, double upper,
                          double weight)
{
    slice.last = std::max(slice.last, point.x);
    if (!isKnown(point)) {
        if (slice.quality == Quality::Good)
            slice.quality = Quality::Uncertain;
        return;
    }
    slice.lower = std::fmin(slice.lower, lower);
    slice.upper = std::fmax(slice.upper, upper);
    slice.sum += point.y * weight;
    slice.weight += weight;
    slice.quality = std::max(slice.quality, point.quality);
}

void CorridorSlices::add(const SeriePoint &point)
{
    if (std::isfinite(point.x))
        fold(at(point.x, point.x), point, point.y, point.y, 1);
}

void CorridorSlices::add(const std::vector<Nodes::SignalHistoryResponse> &answer,
                         unsigned long signal)
{
    for (const Nodes::SignalHistoryResponse &response : answer) {
        if (response.GetNodeId() != signal)
            continue;
        const Nodes::IntervalSample *interval = response.getIntervalSample();
        if (!interval) {
            for (const SeriePoint &point :
                 SeriePoints::ofAnswer({response}, signal, ChartTime::now()))
                add(point);
            continue;
        }
        const double begin = ChartTime::toX(interval->begin);
        const bool isPart = interval->worst == Quality::Bad || interval->worst == Quality::Stale;
        const double ends = interval->first + interval->last;
        const double mean =
            (std::isfinite(ends) ? ends : interval->minimum + interval->maximum) / 2;
        fold(at(begin, ChartTime::toX(interval->end)),
             {begin, mean, isPart ? Quality::Uncertain : interval->worst}, interval->minimum,
             interval->maximum, double(interval->count));
    }
}

double CorridorSlices::longest() const
{
    double longest = m_width;
    for (const auto &[begin, slice] : m_slices)
        longest = std::max(longest, slice.end - begin);
    return longest;
}

void CorridorSlices::trimLeft(double x)
{
    // The slice before stays, so that the tube enters from the edge.
    auto first = m_slices.lower_bound(x);
    for (int kept = 0; kept < 2 && first != m_slices.begin(); ++kept)
        --first;
    m_slices.erase(m_slices.begin(), first);
}

void CorridorSlices::clear()
{
    m_slices.clear();
}

std::vector<TubeSample> CorridorSlices::samples() const
{
    std::vector<TubeSample> samples;
    samples.reserve(m_slices.size());
    for (const auto &[begin, slice] : m_slices) {
        if (slice.weight > 0)
            samples.push_back({(begin + slice.end) / 2, slice.lower, slice.sum / slice.weight,
                               slice.upper, slice.quality});
        else
            samples.push_back({(begin + slice.end) / 2, nothing, nothing, nothing, Quality::Bad});
    }
    if (!samples.empty())
        samples.back().x = m_slices.rbegin()->second.last;
    return samples;
}

void CorridorEdges::add(const std::vector<SeriePoint> &lower, const std::vector<SeriePoint> &upper)
{
    m_lower.insert(m_lower.end(), lower.begin(), lower.end());
    m_upper.insert(m_upper.end(), upper.begin(), upper.end());
    SeriePoints::sort(m_lower);
    SeriePoints::sort(m_upper);
}

void CorridorEdges::trimLeft(double x)
{
    trim(m_lower, x);
    trim(m_upper, x);
}

void CorridorEdges::clear()
{
    m_lower = {};
    m_upper = {};
}

std::vector<TubeSample> CorridorEdges::samples() const
{
    std::vector<TubeSample> samples;
    auto lower = m_lower.begin();
    auto upper = m_upper.begin();
    while (lower != m_lower.end() || upper != m_upper.end()) {
        const double x = upper == m_upper.end() || (lower != m_lower.end() && lower->x <= upper->x)
                             ? lower->x
                             : upper->x;
        while (lower != m_lower.end() && lower->x <= x)
            ++lower;
        while (upper != m_upper.end() && upper->x <= x)
            ++upper;
        if (lower == m_lower.begin() || upper == m_upper.begin())
            continue; // one edge is not known yet
        const SeriePoint &low = *std::prev(lower);
        const SeriePoint &high = *std::prev(upper);
        if (isKnown(low) && isKnown(high))
            samples.push_back({x, std::min(low.y, high.y), (low.y + high.y) / 2,
                               std::max(low.y, high.y), std::max(low.quality, high.quality)});
        else
            samples.push_back({x, nothing, nothing, nothing, Quality::Bad});
    }
    return samples;
}

} // namespace Widgets
