#pragma once

namespace Nodes {

/// Severity of a journal entry; smaller is graver. 7 is the level of operator actions.
enum EventLevel {
    LevelCritical = 1,
    LevelAlarm = 2,
    LevelWarning = 3,
    LevelAcknowledge = 4,
    LevelInformation = 5,
    LevelSecurity = 6,
    LevelAction = 7,
    LevelDebug = 8
};

/// Severity of an alarm of that priority, 1 highest to 4 lowest.
constexpr EventLevel AlarmLevel(int priority)
{
    return priority == 1 ? LevelCritical : priority == 4 ? LevelWarning : LevelAlarm;
}

/// Nature of a journal entry.
enum EventType {
    TypeMessage = 1,
    TypeAlarmActive = 2,
    TypeAlarmReturned = 3,
    TypeAlarmState = 4, ///< shelved, suppressed, out of service and back
    TypeAcknowledgement = 5,
    TypeSystemState = 6,
    TypeSecurityEvent = 7
};

} // namespace Nodes
