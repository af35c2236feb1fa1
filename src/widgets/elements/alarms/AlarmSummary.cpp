#include "widgets/elements/alarms/AlarmSummary.h"

namespace Widgets {

using Nodes::AlarmState;

namespace {

enum Group { Active, Returned, Hidden, Nothing };

Group groupOf(AlarmState state)
{
    switch (state) {
    case AlarmState::ActiveUnacked:
    case AlarmState::ActiveAcked:
    case AlarmState::AwaitingReset:
        return Active;
    case AlarmState::ReturnedUnacked:
        return Returned;
    case AlarmState::Shelved:
    case AlarmState::Suppressed:
    case AlarmState::OutOfService:
        return Hidden;
    default:
        return Nothing;
    }
}

} // namespace

void AlarmSummary::add(const Nodes::BasicEvent &alarm)
{
    const Group group = groupOf(alarm.alarmState);
    const Group mine = groupOf(state);
    if (group == Nothing || group > mine)
        return;
    const bool isUnacked = blinks() || alarm.alarmState == AlarmState::ActiveUnacked;
    if (group < mine || alarm.priority < priority) {
        state = alarm.alarmState;
        priority = alarm.priority;
    }
    if (group == Active)
        state = isUnacked ? AlarmState::ActiveUnacked : AlarmState::ActiveAcked;
}

bool AlarmSummary::isHidden() const
{
    return groupOf(state) == Hidden;
}

} // namespace Widgets
