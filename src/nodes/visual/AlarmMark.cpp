#include "nodes/visual/AlarmMark.h"

#include "nodes/alarms/alarmLimit.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>

namespace Nodes {

namespace {

constexpr int lowestAlarm = 2; // priority; the rest are warnings

LimitZones::enZone zoneOf(const BasicEvent &record)
{
    const auto *limit = dynamic_cast<const alarmLimit *>(record.sourceNode.GetNode());
    if (!limit)
        return LimitZones::ZoneNormal;
    switch (limit->GetLimitType()) {
    case alarmLimit::LowLow:
        return LimitZones::ZoneLowLow;
    case alarmLimit::Low:
        return LimitZones::ZoneLow;
    case alarmLimit::High:
        return LimitZones::ZoneHigh;
    default:
        return LimitZones::ZoneHighHigh;
    }
}

AlarmMark markOf(const BasicEvent &record)
{
    AlarmMark mark = AlarmMark::OfZone(zoneOf(record));
    mark.state = record.alarmState;
    if (mark.zone == LimitZones::ZoneNormal) {
        mark.isAlarm = record.priority <= lowestAlarm;
        mark.token = "!";
    }
    return mark;
}

auto urgency(const AlarmMark &mark, int priority)
{
    const int group = mark.isActive() ? 0 : mark.isHidden() ? 2 : 1;
    return std::tuple(group, priority, -std::abs(int(mark.zone)), int(mark.state));
}

} // namespace

AlarmMark AlarmMark::OfZone(LimitZones::enZone zone)
{
    AlarmMark mark;
    mark.state = zone == LimitZones::ZoneNormal ? AlarmState::Normal : AlarmState::ActiveAcked;
    mark.zone = zone;
    mark.isAlarm = LimitZones::isAlarm(zone);
    mark.token = LimitZones::GetToken(zone);
    return mark;
}

AlarmMark AlarmMark::Of(const BasicSignal &signal)
{
    return Of(signal, signal.GetValue());
}

AlarmMark AlarmMark::Of(const BasicSignal &signal, const SignalValue &value)
{
    if (IsForbiddenToView(signal))
        return {};
    const systemCore *core = signal.GetCore();
    const systemAlarming *alarming = core ? core->GetSystemAlarming() : nullptr;
    if (!alarming) {
        return value.GetQuality() == Quality::Bad
                   ? AlarmMark()
                   : OfZone(LimitZones::FromOwnAlarms(signal).GetZone(value.ToDouble()));
    }
    AlarmMark first;
    bool isUnacked = false;
    int priority = 0;
    for (const BasicEvent &record : alarming->GetActiveAlarms(signal)) {
        const AlarmMark mark = markOf(record);
        isUnacked = isUnacked || record.alarmState == AlarmState::ActiveUnacked;
        if (first.state != AlarmState::Normal &&
            urgency(first, priority) <= urgency(mark, record.priority))
            continue;
        first = mark;
        priority = record.priority;
    }
    // An alarm that was acknowledged does not hide that another was not.
    if (isUnacked)
        first.state = AlarmState::ActiveUnacked;
    return first;
}

} // namespace Nodes
