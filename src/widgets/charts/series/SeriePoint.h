#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Quality.h"

#include <vector>

namespace Nodes {
class SignalHistoryResponse;
class SignalValue;
} // namespace Nodes

namespace Widgets {

/// One place of a curve: when (X of ChartTime), what, how trustworthy. NaN is a gap, which is of
/// bad quality.
struct SeriePoint
{
    double x;
    double y;
    Nodes::Quality quality;
};

/// From samples to the points that a series draws.
namespace SeriePoints {

/// Bad and stale values, and what is no finite number, are gaps.
WIDGETS_EXPORT SeriePoint ofValue(double x, const Nodes::SignalValue &value);

/// The samples of that signal, in their order. An aggregate becomes up to four points within its
/// time: first, the extremes, last, so that none is lost; where it ends in a time that has not come
/// yet, they end at `now`.
WIDGETS_EXPORT std::vector<SeriePoint>
ofAnswer(const std::vector<Nodes::SignalHistoryResponse> &answer, unsigned long signal, double now);

/// One point a sample of that signal, at its begin: of an aggregate its lowest, highest or last.
enum class Edge { Lower, Upper, Last };
WIDGETS_EXPORT std::vector<SeriePoint>
edgeOf(const std::vector<Nodes::SignalHistoryResponse> &answer, unsigned long signal, Edge edge);

/// Brings them into the order of time; of the same value at the same time one stays.
WIDGETS_EXPORT void sort(std::vector<SeriePoint> &points);
/// Puts a point where it belongs by its time, behind those of the same one; false for one that is
/// there already.
WIDGETS_EXPORT bool insert(std::vector<SeriePoint> &points, const SeriePoint &point);

} // namespace SeriePoints

} // namespace Widgets
