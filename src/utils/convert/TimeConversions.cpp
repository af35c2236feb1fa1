#include "utils/convert/TimeConversions.h"

#include <cmath>

namespace Utils {

namespace {

qint64 toMilliseconds(Nodes::Timestamp time)
{
    const qint64 whole = time / 1000;
    return time % 1000 < 0 ? whole - 1 : whole;
}

} // namespace

QDateTime toLocalTime(Nodes::Timestamp time)
{
    return time == 0 ? QDateTime() : QDateTime::fromMSecsSinceEpoch(toMilliseconds(time));
}

Nodes::Timestamp toTimestamp(const QDateTime &time)
{
    return time.isValid() ? time.toMSecsSinceEpoch() * 1000 : 0;
}

double toAxisTime(Nodes::Timestamp time)
{
    return static_cast<double>(time) / 1000.0;
}

Nodes::Timestamp fromAxisTime(double milliseconds)
{
    return std::isfinite(milliseconds) ? std::llround(milliseconds * 1000.0) : 0;
}

QString timeText(Nodes::Timestamp time, const char *format)
{
    return time == 0 ? QString::fromUtf8("—")
                     : toLocalTime(time).toString(QString::fromLatin1(format));
}

} // namespace Utils
