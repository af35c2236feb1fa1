#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <optional>
#include <string_view>

namespace Nodes {

/// When a timer fires: pure arithmetic on given clock readings. Periods that were missed (machine
/// asleep, thread late) are not made up: one firing, then the next one in step.
class NODES_EXPORT TimerSchedule
{
public:
    static TimerSchedule Periodic(Timestamp interval);
    static TimerSchedule Once(Timestamp delay);
    /// Every day at that local time, seconds since midnight.
    static TimerSchedule Daily(int secondOfDay);
    /// "HH:MM:SS" or "HH:MM" as seconds since midnight.
    static std::optional<int> ParseTimeOfDay(std::string_view text);

    void Begin(Timestamp wall, Timestamp steady);
    /// True when the timer fires now; moves on to the next time.
    bool Poll(Timestamp wall, Timestamp steady);
    /// Steady time of the next Poll; INT64_MAX when there is none.
    Timestamp Deadline() const { return m_deadline; }

private:
    enum class Kind { Periodic, Once, Daily };

    TimerSchedule(Kind kind, Timestamp interval, int secondOfDay);
    bool pollDaily(Timestamp wall, Timestamp steady);

    Kind m_kind;
    Timestamp m_interval;
    int m_secondOfDay;
    Timestamp m_deadline;
    Timestamp m_nextWall = 0;
};

} // namespace Nodes
