#include "nodes/alarms/AlarmSettings.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/alarmLimit.h"
#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

namespace {

int rankOf(alarmLimit::LimitType type)
{
    switch (type) {
    case alarmLimit::HighHigh:
        return 2;
    case alarmLimit::High:
        return 1;
    case alarmLimit::Low:
        return -1;
    case alarmLimit::LowLow:
        return -2;
    }
    return 0;
}

} // namespace

AlarmSettings AlarmSettings::Of(const BasicAlarm &alarm, const AlarmTuning &tuning)
{
    AlarmSettings settings;
    settings.node = alarm.GetNodeLink();
    settings.source = alarm.GetPath();
    settings.text = alarm.GetText();
    settings.priority = alarm.GetPriority();
    settings.isAckRequired = alarm.isAckRequired();
    settings.onDelay = Timestamp(tuning.onDelay.value_or(alarm.GetOnDelay())) * 1000;
    settings.offDelay = Timestamp(tuning.offDelay.value_or(alarm.GetOffDelay())) * 1000;
    settings.isLatched = alarm.isLatched();
    settings.realarm = Timestamp(alarm.GetRealarm()) * 60 * 1000000;
    settings.firstUpGroup = alarm.GetFirstUpGroup();
    settings.suppressReason = alarm.GetSuppressReason();
    settings.area = alarm.GetArea();
    if (const auto *limit = dynamic_cast<const alarmLimit *>(&alarm))
        settings.limitRank = rankOf(limit->GetLimitType());
    if (const BasicSignal *signal = alarm.GetSignal()) {
        settings.minimum = signal->GetMinimum();
        settings.maximum = signal->GetMaximum();
        settings.decimals = signal->GetDecimals();
        settings.unit = signal->GetUnit();
    }
    std::unique_ptr<AlarmCondition> condition = alarm.MakeCondition();
    if (const AlarmThreshold *own = condition->GetThreshold())
        condition->SetThreshold(
            {tuning.limit.value_or(own->limit), tuning.deadband.value_or(own->deadband)});
    settings.condition = std::move(condition);
    return settings;
}

} // namespace Nodes
