#include "widgets/eventlist/DayInterval.h"

#include <cmath>

namespace Widgets {

DayInterval DayInterval::ofSeconds(long long seconds, const QDateTime &now)
{
    constexpr double day = 86400;
    const double back = std::trunc(double(seconds) / day - 1);
    return ofDates(now.addDays(-qint64(back)).date(), now.date());
}

DayInterval DayInterval::upToToday(int days, const QDateTime &now)
{
    return ofDates(now.addDays(1 - days).date(), now.date());
}

// Clocks may be put on at midnight: the day then begins later.
DayInterval DayInterval::ofDates(const QDate &first, const QDate &last)
{
    return {first.startOfDay(), last.endOfDay()};
}

int DayInterval::days() const
{
    constexpr qint64 day = 86400000; // ms
    const QDateTime begin(from.date(), from.time(), Qt::UTC);
    const QDateTime end(to.date(), to.time(), Qt::UTC);
    const qint64 length = begin.msecsTo(end);
    return int(length < 0 ? (length - day + 1) / day : (length + 1) / day);
}

DayInterval DayInterval::shifted(int days) const
{
    return {from.addDays(days), to.addDays(days)};
}

} // namespace Widgets
