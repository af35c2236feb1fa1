#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <string>

namespace Nodes {

/// A day of this machine's local time. Months and days beyond their range are those of the
/// neighbouring month or year.
struct LocalDay
{
    int year = 1970;
    int month = 1; ///< 1 to 12
    int day = 1;
};

/// Moments of local time. A day has 23 or 25 hours where the clock is put forward or back: a time
/// of day is always what the clock on the wall shows. Any thread.
namespace LocalCalendar {

NODES_EXPORT LocalDay DayOf(Timestamp moment);
/// 0 for Monday to 6.
NODES_EXPORT int WeekdayOf(const LocalDay &day);
/// When the clock shows that many seconds of the day; the earlier one of two such moments, the one
/// just behind the gap where the clock leaps over it.
NODES_EXPORT Timestamp MomentOf(const LocalDay &day, int secondOfDay = 0);
/// The first moment after `moment` at which the clock shows a full hour.
NODES_EXPORT Timestamp NextHour(Timestamp moment);
/// In a format of strftime.
NODES_EXPORT std::string Text(Timestamp moment, const char *format);

} // namespace LocalCalendar

/// As reports write a moment: "2026-03-29 08:00:00", with microseconds where there are any.
NODES_EXPORT std::string ReportTimeText(Timestamp moment);

} // namespace Nodes
