#include "widgets/charts/time/ChartTime.h"

#include <cmath>

namespace Widgets::ChartTime {

namespace {

constexpr double latest = 253402300799999; // 9999-12-31; later ones are no times of a plant

bool isTime(double x)
{
    return std::isfinite(x) && std::abs(x) <= latest;
}

} // namespace

// Once: every value on every trend asks for it.
qint64 epoch()
{
    static const qint64 local = [] {
        const QDateTime midnight(QDate(1970, 1, 1), QTime(0, 0));
        return midnight.isValid() ? midnight.toMSecsSinceEpoch() : 0;
    }();
    return local;
}

double toX(Nodes::Timestamp microsecondsUtc)
{
    return double(microsecondsUtc / 1000 - epoch());
}

double fromUtc(quint64 milliseconds)
{
    return double(qint64(milliseconds) - epoch());
}

quint64 toUnsigned(double x)
{
    return isTime(x) && x > 0 ? quint64(x) : 0;
}

quint64 toUtc(double x)
{
    const qint64 utc = isTime(x) ? qint64(x) + epoch() : 0;
    return utc > 0 ? quint64(utc) : 0;
}

QDateTime toDateTime(double x)
{
    return isTime(x) ? QDateTime::fromMSecsSinceEpoch(qint64(x) + epoch()) : QDateTime();
}

QString text(double x, const QString &format)
{
    const QString wanted = format.isEmpty() ? QString::fromLatin1(defaultFormat) : format;
    return toDateTime(x).toString(wanted).replace(QLatin1String("\\n"), QLatin1String("\n"));
}

double now()
{
    return double(QDateTime::currentMSecsSinceEpoch() - epoch());
}

} // namespace Widgets::ChartTime
