#include "widgets/elements/alarms/BannerFacts.h"

#include "utils/convert/TimeConversions.h"

#include <algorithm>
#include <tuple>

namespace Widgets {

using Nodes::AlarmState;

namespace {

bool waits(const Nodes::BasicEvent &alarm)
{
    return alarm.alarmState == AlarmState::ActiveUnacked ||
           alarm.alarmState == AlarmState::ReturnedUnacked;
}

bool isThere(const Nodes::BasicEvent &alarm)
{
    return alarm.alarmState == AlarmState::ActiveUnacked ||
           alarm.alarmState == AlarmState::ActiveAcked ||
           alarm.alarmState == AlarmState::AwaitingReset;
}

auto urgency(const Nodes::BasicEvent &alarm)
{
    const unsigned long newest = alarm.sourceNode.GetNodeId(); // of two at once always the same
    return std::tuple(alarm.priority, -alarm.raised, newest);
}

int sum(const std::array<BannerFacts::Count, 4> &counts, int BannerFacts::Count::*what)
{
    int all = 0;
    for (const BannerFacts::Count &count : counts)
        all += count.*what;
    return all;
}

} // namespace

BannerFacts BannerFacts::of(const Alarms &alarms, const std::string &area)
{
    BannerFacts facts;
    const Nodes::BasicEvent *top = nullptr;
    for (const Nodes::BasicEvent &alarm : alarms) {
        if (!area.empty() && alarm.area != area)
            continue;
        Count &count = facts.counts[std::size_t(qBound(1, alarm.priority, 4) - 1)];
        count.waiting += waits(alarm);
        count.active += isThere(alarm);
        facts.hidden += !waits(alarm) && !isThere(alarm);
        if (waits(alarm) && (!top || urgency(alarm) < urgency(*top)))
            top = &alarm;
    }
    if (top)
        facts.top = *top;
    const bool isAny = sum(facts.counts, &Count::active) > 0;
    facts.state = top ? Waiting : isAny ? Acknowledged : Calm;
    return facts;
}

bool BannerFacts::isLate(const std::vector<Nodes::BasicEvent> &actual, const Alarms &known,
                         Nodes::Timestamp before)
{
    return std::any_of(actual.begin(), actual.end(), [&](const Nodes::BasicEvent &alarm) {
        const auto found = known.constFind(alarm.sourceNode.GetNodeId());
        return alarm.time < before &&
               (found == known.constEnd() || found->occurrence != alarm.occurrence ||
                found->alarmState != alarm.alarmState);
    });
}

bool BannerFacts::blinks() const
{
    return state == Waiting && top.alarmState == AlarmState::ActiveUnacked;
}

QString BannerFacts::headline() const
{
    switch (state) {
    case Drawn:
        return QStringLiteral("Строка тревог");
    case Absent:
        return QStringLiteral("✕ В проекте нет подсистемы тревог");
    case Off:
        return QStringLiteral("✕ Тревоги не отслеживаются");
    case Late:
        return QStringLiteral("✕ Список тревог не обновляется");
    case Calm:
        return QStringLiteral("○ Тревог нет");
    case Acknowledged:
        return QStringLiteral("Все тревоги квитированы");
    default:
        return QString::fromStdString(top.text);
    }
}

QString BannerFacts::details() const
{
    switch (state) {
    case Off:
        return QStringLiteral("Подсистема тревог остановлена");
    case Late:
        return QStringLiteral("Показанное устарело: перезапустите станцию");
    case Acknowledged:
        return QStringLiteral("Активных: %1").arg(sum(counts, &Count::active));
    case Waiting:
        break;
    default:
        return {};
    }
    QStringList parts{Utils::timeText(top.raised != 0 ? top.raised : top.time, "hh:mm:ss")};
    if (top.alarmState == AlarmState::ReturnedUnacked)
        parts.append(QStringLiteral("снята"));
    if (top.isFirstUp)
        parts.append(QStringLiteral("первая в группе"));
    if (!top.area.empty())
        parts.append(QString::fromStdString(top.area));
    const int others = sum(counts, &Count::waiting) - 1;
    if (others > 0)
        parts.append(QStringLiteral("ещё %1").arg(others));
    return parts.join(QStringLiteral(" · "));
}

QStringList BannerFacts::notes() const
{
    QStringList notes;
    if (isTrouble() || state == Drawn)
        return notes;
    if (flood >= 0)
        notes.append(QStringLiteral("Лавина: %1").arg(flood));
    if (isMuted)
        notes.append(QStringLiteral("Звук выключен"));
    if (isFiltered)
        notes.append(QStringLiteral("Фильтр"));
    if (hidden > 0)
        notes.append(QStringLiteral("Скрыто: %1").arg(hidden));
    return notes;
}

bool BannerFacts::operator==(const BannerFacts &o) const
{
    return state == o.state && top == o.top && counts == o.counts && hidden == o.hidden &&
           flood == o.flood && isMuted == o.isMuted && isFiltered == o.isFiltered &&
           mayAcknowledge == o.mayAcknowledge;
}

} // namespace Widgets
