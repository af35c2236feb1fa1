#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/statistics/SpanStatistics.h"

#include <optional>

namespace Nodes {
struct HistoryColumn;
}

namespace Widgets {

class ISerie;

/// Statistics of a series between two moments of its plot (X values). GUI thread.
namespace SerieSpan {

/// How its samples are joined.
WIDGETS_EXPORT SpanIntegrator::Join joinOf(const ISerie &serie);
/// X value until which its line goes on from the last sample: the present while it is live; NaN:
/// it does not.
WIDGETS_EXPORT double heldUntil(const ISerie &serie);
/// From what the plot holds, which may be aggregates: then marked as approximate. Nothing for a
/// series that is not drawn over time.
WIDGETS_EXPORT std::optional<SpanStatistics> ofDrawn(const ISerie &serie, double from, double to);
/// From what the archive answered.
WIDGETS_EXPORT SpanStatistics ofArchive(const ISerie &serie, const Nodes::HistoryColumn &column,
                                        double from, double to);
/// Value of the series at a moment, as it is drawn, without its offset; nothing in a gap.
WIDGETS_EXPORT std::optional<double> valueAt(const ISerie &serie, double x);

} // namespace SerieSpan

} // namespace Widgets
