#include "nodes/alarms/engine/AlarmRecord.h"

#include "nodes/alarms/AlarmSettings.h"
#include "nodes/alarms/engine/AlarmMemory.h"

namespace Nodes {

namespace {

EventLevel levelOf(EventType type, int priority, const std::string &user)
{
    if (type == TypeAcknowledgement)
        return LevelAcknowledge;
    if (type == TypeAlarmReturned || type == TypeAlarmState)
        return user.empty() ? LevelInformation : LevelAction;
    return AlarmLevel(priority);
}

void tellWhoHid(BasicEvent &record, const AlarmDeed &deed)
{
    record.hiddenBy = deed.by;
    record.hiddenReason = deed.reason;
}

/// The same order as that of the states.
void tellHiding(BasicEvent &record, const AlarmSettings &settings, const AlarmMemory &memory)
{
    if (memory.isOutOfService) {
        tellWhoHid(record, memory.Deeds().outOfService);
    } else if (memory.isSuppressed) {
        tellWhoHid(record, memory.Deeds().suppressed);
    } else if (memory.isSuppressedByDesign) {
        record.hiddenReason = settings.suppressReason;
    } else {
        tellWhoHid(record, memory.Deeds().shelved);
        record.hiddenUntil = memory.shelvedUntil;
    }
}

} // namespace

BasicEvent AlarmRecord(const AlarmSettings &settings, const AlarmMemory &memory, EventType type,
                       const std::string &user)
{
    BasicEvent record;
    record.time = memory.changed;
    record.type = type;
    record.level = levelOf(type, settings.priority, user);
    record.text = settings.text;
    record.source = settings.source;
    record.sourceNode = settings.node;
    record.user = user;
    record.alarmState = memory.State();
    record.priority = settings.priority;
    record.occurrence = memory.occurrence;
    record.raised = memory.raised;
    record.acknowledged = memory.acknowledged;
    record.returned = memory.returned;
    record.area = settings.area;
    record.reminders = memory.reminders;
    record.comment = memory.Deeds().comment;
    if (memory.isHidden())
        tellHiding(record, settings, memory);
    return record;
}

} // namespace Nodes
