#include "widgets/charts/axes/TimeSteps.h"

#include "widgets/charts/time/ChartTime.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Widgets {

namespace {

constexpr int second = 1000;
constexpr int minute = 60 * second;
constexpr int hour = 60 * minute;
constexpr double day = 24.0 * hour;
constexpr double month = 30.436875 * day;
constexpr int mostMarks = 2000;

// Ascending. A row is the next candidate when the one before has too many marks.
constexpr TimeStep steps[] = {
    {TimeStep::Milliseconds, 1},
    {TimeStep::Milliseconds, 2},
    {TimeStep::Milliseconds, 5},
    {TimeStep::Milliseconds, 10},
    {TimeStep::Milliseconds, 20},
    {TimeStep::Milliseconds, 50},
    {TimeStep::Milliseconds, 100},
    {TimeStep::Milliseconds, 200},
    {TimeStep::Milliseconds, 500},
    {TimeStep::Milliseconds, second},
    {TimeStep::Milliseconds, 2 * second},
    {TimeStep::Milliseconds, 5 * second},
    {TimeStep::Milliseconds, 10 * second},
    {TimeStep::Milliseconds, 15 * second},
    {TimeStep::Milliseconds, 30 * second},
    {TimeStep::Milliseconds, minute},
    {TimeStep::Milliseconds, 2 * minute},
    {TimeStep::Milliseconds, 5 * minute},
    {TimeStep::Milliseconds, 10 * minute},
    {TimeStep::Milliseconds, 15 * minute},
    {TimeStep::Milliseconds, 30 * minute},
    {TimeStep::Milliseconds, hour},
    {TimeStep::Milliseconds, 2 * hour},
    {TimeStep::Milliseconds, 3 * hour},
    {TimeStep::Milliseconds, 6 * hour},
    {TimeStep::Milliseconds, 12 * hour},
    {TimeStep::Days, 1},
    {TimeStep::Days, 2},
    {TimeStep::Days, 7},
    {TimeStep::Months, 1},
    {TimeStep::Months, 2},
    {TimeStep::Months, 3},
    {TimeStep::Months, 6},
    {TimeStep::Months, 12},
    {TimeStep::Months, 24},
    {TimeStep::Months, 60},
    {TimeStep::Months, 120},
    {TimeStep::Months, 240},
    {TimeStep::Months, 600},
    {TimeStep::Months, 1200},
    {TimeStep::Months, 12000},
};

/// What the clock of that place shows more than elapsed milliseconds of `x` at that moment.
double clockOffset(double x)
{
    return ChartTime::toDateTime(x).offsetFromUtc() * double(second) + double(ChartTime::epoch());
}

/// First moment from `x` on at which the clock shows a multiple of the step. A mark that the clock
/// skips when it is set forward is left out, one that it shows twice is there twice.
double alignUp(double x, int step)
{
    double aligned = x;
    for (int tries = 0; tries < 3; ++tries) {
        const double clock = aligned + clockOffset(aligned);
        const double missing = std::ceil(clock / step) * step - clock;
        if (!(missing > 0))
            break;
        aligned += missing;
    }
    return aligned;
}

QList<double> clockMarks(int step, double lower, double upper)
{
    QList<double> marks;
    double mark = alignUp(std::ceil(lower), step);
    while (mark <= upper && marks.size() < mostMarks) {
        marks << mark;
        mark = alignUp(std::max(mark + 1, mark + step - hour), step);
    }
    return marks;
}

double startOf(const QDate &date)
{
    return double(date.startOfDay().toMSecsSinceEpoch() - ChartTime::epoch());
}

QDate alignDown(const QDate &date, const TimeStep &step)
{
    if (step.unit == TimeStep::Days) {
        // Julian day 0 is a Monday.
        return date.addDays(-int(date.toJulianDay() % step.count));
    }
    const int months = date.year() * 12 + date.month() - 1;
    const int aligned = months - months % step.count;
    return {std::max(aligned / 12, 1), aligned % 12 + 1, 1};
}

QDate next(const QDate &date, const TimeStep &step)
{
    return step.unit == TimeStep::Days ? date.addDays(step.count) : date.addMonths(step.count);
}

QList<double> calendarMarks(const TimeStep &step, double lower, double upper)
{
    QList<double> marks;
    QDate date = alignDown(ChartTime::toDateTime(lower).date(), step);
    for (; date.isValid() && marks.size() < mostMarks; date = next(date, step)) {
        const double mark = startOf(date);
        if (mark > upper)
            break;
        if (mark >= lower)
            marks << mark;
    }
    return marks;
}

} // namespace

double TimeStep::length() const
{
    switch (unit) {
    case Milliseconds:
        return count;
    case Days:
        return count * day;
    case Months:
        break;
    }
    return count * month;
}

namespace TimeSteps {

TimeStep forSpan(double span, int most)
{
    const double shortest = span / std::max(most, 1);
    const auto found =
        std::find_if(std::begin(steps), std::end(steps),
                     [shortest](const TimeStep &step) { return step.length() >= shortest; });
    return found == std::end(steps) ? *std::prev(found) : *found;
}

std::optional<TimeStep> between(const TimeStep &major, int most)
{
    for (const TimeStep &step : steps) {
        const double parts = major.length() / step.length();
        // Months have no whole number of weeks; days and hours fit by their count.
        const bool fits = step.unit == major.unit
                              ? major.count % step.count == 0
                              : step.count == 1 || step.unit == TimeStep::Milliseconds;
        if (fits && parts <= most && parts >= 1.9)
            return step;
    }
    return std::nullopt;
}

QList<double> marks(const TimeStep &step, double lower, double upper)
{
    const bool isTime =
        ChartTime::toDateTime(lower).isValid() && ChartTime::toDateTime(upper).isValid();
    if (!isTime || upper < lower)
        return {};
    return step.unit == TimeStep::Milliseconds ? clockMarks(step.count, lower, upper)
                                               : calendarMarks(step, lower, upper);
}

} // namespace TimeSteps

} // namespace Widgets
