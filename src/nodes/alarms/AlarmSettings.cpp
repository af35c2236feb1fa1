#include "nodes/alarms/AlarmSettings.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/engine/AlarmCondition.h"

namespace Nodes {

AlarmSettings AlarmSettings::Of(const BasicAlarm &alarm)
{
    AlarmSettings settings;
    settings.node = alarm.GetNodeLink();
    settings.source = alarm.GetPath();
    settings.text = alarm.GetText();
    settings.priority = alarm.GetPriority();
    settings.isAckRequired = alarm.isAckRequired();
    settings.onDelay = Timestamp(alarm.GetOnDelay()) * 1000;
    settings.offDelay = Timestamp(alarm.GetOffDelay()) * 1000;
    settings.condition = alarm.MakeCondition();
    return settings;
}

} // namespace Nodes
