#include "widgets/events/AlarmSpans.h"

namespace Widgets {

namespace {

constexpr Nodes::Timestamp second = 1000000;
constexpr Nodes::Timestamp minute = 60 * second;

QString pair(qint64 larger, const char *largerUnit, qint64 lesser, const char *lesserUnit)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(larger)
        .arg(QString::fromUtf8(largerUnit))
        .arg(lesser, 2, 10, QLatin1Char('0'))
        .arg(QString::fromUtf8(lesserUnit));
}

} // namespace

QString AlarmSpans::text(Nodes::Timestamp span)
{
    const qint64 seconds = span / second;
    const qint64 minutes = seconds / 60;
    const qint64 hours = minutes / 60;
    if (hours >= 24)
        return pair(hours / 24, "сут", hours % 24, "ч");
    if (hours > 0)
        return pair(hours, "ч", minutes % 60, "мин");
    if (minutes > 0)
        return pair(minutes, "мин", seconds % 60, "с");
    return QStringLiteral("%1 с").arg(seconds);
}

bool AlarmSpans::isOverdue(Nodes::Timestamp raised, int minutes, Nodes::Timestamp now)
{
    return minutes > 0 && raised > 0 && now >= raised + minutes * minute;
}

QString AlarmSpans::responseText(Nodes::Timestamp raised, int minutes, Nodes::Timestamp now)
{
    if (minutes <= 0 || raised <= 0)
        return {};
    const Nodes::Timestamp end = raised + minutes * minute;
    return now < end ? QStringLiteral("осталось %1").arg(text(end - now))
                     : QStringLiteral("просрочено на %1").arg(text(now - end));
}

} // namespace Widgets
