#pragma once

#include "widgets/WidgetsExport.h"

#include <QList>

#include <optional>

namespace Widgets {

/// A distance of marks on a clock or a calendar.
struct TimeStep
{
    enum Unit { Milliseconds, Days, Months };
    Unit unit = Milliseconds;
    int count = 1;         ///< 7 days: Mondays
    double length() const; ///< milliseconds, of months about
};

/// Marks of local time on X values of ChartTime. Any thread.
namespace TimeSteps {

/// Finest step that has at most `most` marks over a span of milliseconds.
WIDGETS_EXPORT TimeStep forSpan(double span, int most);
/// Step of the marks between those of `major`; nothing when there are to be fewer than 2 a major
/// step.
WIDGETS_EXPORT std::optional<TimeStep> between(const TimeStep &major, int most);
/// Marks from `lower` to `upper`, ascending; a bounded number of them.
WIDGETS_EXPORT QList<double> marks(const TimeStep &step, double lower, double upper);

} // namespace TimeSteps

} // namespace Widgets
