#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/EventLevel.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Timestamp.h"

#include <string>

namespace Nodes {

/// State of an alarm after ISA-18.2.
enum class AlarmState {
    None = 0, ///< an event that is no alarm
    ActiveUnacked = 1,
    ActiveAcked = 2,
    ReturnedUnacked = 3,
    Normal = 4,
    Shelved = 5,
    Suppressed = 6,
    OutOfService = 7,
    AwaitingReset = 8 ///< latched and acknowledged; its condition is gone, nobody has reset it yet
};

/// An event or alarm record. Plain value, copied across threads.
struct NODES_EXPORT BasicEvent
{
    unsigned long id = 0; ///< journal row; 0 until stored
    Timestamp time = 0;   ///< when it happened; of a listed alarm: its last change of state
    EventLevel level = LevelInformation;
    EventType type = TypeMessage;
    std::string text;
    std::string source;   ///< name of the source at the time; kept when the node is renamed
    NodeLink sourceNode;  ///< empty when the source is no node
    std::string user;     ///< who did it, of a listed alarm who acknowledged it; "": the system
    std::string oldValue; ///< of a write, else ""
    std::string newValue; ///< of a write; of an alarm its signal's value at that time
    AlarmState alarmState = AlarmState::None;
    int priority = 0;             ///< of an alarm: 1 highest to 4 lowest, 0 for other events
    unsigned long occurrence = 0; ///< same number for all records of one occurrence of an alarm
    /// When that occurrence was raised, acknowledged and returned to normal; 0: not yet. Each is
    /// set once and kept, over a restart too. Entries read from the journal have none of them:
    /// there each is the time of an entry of its own.
    Timestamp raised = 0;
    Timestamp acknowledged = 0;
    Timestamp returned = 0;
    // Of a listed alarm only; the texts of journal entries tell them.
    std::string area;       ///< see BasicAlarm::GetArea
    bool isFirstUp = false; ///< came first in its first-up group, until that is clear again
    int reminders = 0;      ///< how often it was announced again unacknowledged
    std::string comment;    ///< of the last acknowledgement of this occurrence
    /// Shelved, suppressed or out of service: who did it ("" by design or unknown), why, until
    /// when.
    std::string hiddenBy;
    std::string hiddenReason;
    Timestamp hiddenUntil = 0; ///< 0: until taken back

    bool operator==(const BasicEvent &other) const;
    bool operator!=(const BasicEvent &other) const { return !(*this == other); }
};

} // namespace Nodes
