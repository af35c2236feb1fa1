#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QString>

#include <cstddef>
#include <vector>

namespace Widgets {

/// Events that stand so close to each other on a time axis that they share a mark.
struct MarkCluster
{
    double x = 0;          ///< pixels, middle of the mark
    std::size_t first = 0; ///< index of the earliest
    std::size_t count = 0;
    std::size_t gravest = 0; ///< index of the one that the mark shows
};

/// Whether `event` is graver than `other`: by level, then by priority.
WIDGETS_EXPORT bool IsGraver(const Nodes::BasicEvent &event, const Nodes::BasicEvent &other);

/// Joins events at these ascending places, as many as there are events, none of the marks closer
/// to another one than `spacing` pixels.
WIDGETS_EXPORT std::vector<MarkCluster> ClusterMarks(const std::vector<double> &places,
                                                     const std::vector<Nodes::BasicEvent> &events,
                                                     double spacing);

/// What is told of a mark: time, level, text and source of each, at most ten.
WIDGETS_EXPORT QString MarkText(const MarkCluster &mark,
                                const std::vector<Nodes::BasicEvent> &events);

} // namespace Widgets
