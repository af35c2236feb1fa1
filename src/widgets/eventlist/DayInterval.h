#pragma once

#include "widgets/WidgetsExport.h"

#include <QDateTime>

namespace Widgets {

/// Whole days of local time, whatever their length on days on which clocks change. A value.
struct WIDGETS_EXPORT DayInterval
{
    QDateTime from; ///< first millisecond
    QDateTime to;   ///< last millisecond

    /// As many seconds as make full days and a part of one, up to the end of today; what is less
    /// than a day is today. None begins tomorrow.
    static DayInterval ofSeconds(long long seconds, const QDateTime &now);
    /// That many days up to the end of today.
    static DayInterval upToToday(int days, const QDateTime &now);
    static DayInterval ofDates(const QDate &first, const QDate &last);

    /// Full days by the clock on the wall. A millisecond short of midnight counts as midnight;
    /// below 0 for an interval that ends before it begins.
    int days() const;
    /// The same hours of other days.
    DayInterval shifted(int days) const;
    bool contains(const QDateTime &time) const { return time >= from && time <= to; }
};

} // namespace Widgets
