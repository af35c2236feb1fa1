#pragma once

#include "nodes/alarms/AlarmSettings.h"
#include "nodes/alarms/engine/AlarmMemory.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/values/Result.h"
#include "nodes/values/SignalValue.h"

#include <functional>
#include <string>
#include <vector>

namespace Nodes {

/// One instant on both clocks, microseconds.
struct AlarmMoment
{
    Timestamp wall = 0;
    Timestamp steady = 0;

    static AlarmMoment Now();
};

/// State of one alarm after ISA-18.2: a pure state machine without threads or clocks. Every change
/// of the state that operators see, and every operation that changes anything, appends one record
/// to the list given. While the alarm is shelved, suppressed or out of service its condition is
/// followed silently; an occurrence that came and went meanwhile leaves nothing to acknowledge.
class NODES_EXPORT AlarmTracker
{
public:
    using Records = std::vector<BasicEvent>;

    /// `lastOccurrence` is shared by the alarms of a station and outlives the tracker.
    AlarmTracker(AlarmSettings settings, unsigned long &lastOccurrence);

    void Restore(const AlarmMemory &memory, const AlarmMoment &now);
    const AlarmMemory &GetMemory() const { return m_memory; }
    const AlarmSettings &GetSettings() const { return m_settings; }

    /// Takes the signal's latest value. That it cannot be judged, or can again, shows in the text
    /// (see isDoubtful) and is no change of state.
    void Judge(const SignalValue &value, const AlarmMoment &now, Records &records);
    /// Ends delays and shelving that are due.
    void Tick(const AlarmMoment &now, Records &records);
    /// Steady time of the next Tick that may change something; INT64_MAX without one.
    Timestamp Deadline() const;

    /// NotFound when there is nothing to acknowledge; Refused when another occurrence than the one
    /// named waits.
    [[nodiscard]] Result Acknowledge(unsigned long occurrence, const std::string &user,
                                     const std::string &comment, const AlarmMoment &now,
                                     Records &records);
    /// The present occurrence, provided that operators could see it at the steady time `seenBy`;
    /// else NotFound.
    [[nodiscard]] Result AcknowledgeSeen(Timestamp seenBy, const std::string &user,
                                         const std::string &comment, const AlarmMoment &now,
                                         Records &records);
    void Shelve(Timestamp duration, const std::string &user, const AlarmMoment &now,
                Records &records);
    void Unshelve(const std::string &user, const AlarmMoment &now, Records &records);
    void SetOutOfService(bool out, const std::string &user, const AlarmMoment &now,
                         Records &records);
    void SetSuppressed(bool suppressed, const std::string &user, const AlarmMoment &now,
                       Records &records);

    AlarmState GetState() const;
    bool isShelved() const { return m_memory.shelvedUntil != 0; }
    /// The value cannot be judged, which the text of its records tells.
    bool isDoubtful() const { return m_isDoubtful; }
    /// Operators see it on their lists.
    bool isListed() const { return GetState() != AlarmState::Normal && !isHidden(); }
    /// The alarm as a list shows it.
    BasicEvent GetRecord() const;

private:
    bool isHidden() const;
    bool change(EventType type, const std::string &user, const AlarmMoment &now, Records &records,
                const std::function<void()> &edit);
    void operate(const char *what, const std::string &user, const AlarmMoment &now,
                 Records &records, const std::function<void()> &edit);
    BasicEvent recordOf(EventType type, const std::string &user) const;
    void raise(const AlarmMoment &now);
    void clear(const AlarmMoment &now);

    AlarmSettings m_settings;
    unsigned long &m_lastOccurrence;
    AlarmMemory m_memory;
    SignalValue m_value;
    Timestamp m_flipAt;        // steady time at which the pending change counts
    Timestamp m_unshelveAt;    // steady time at which shelving ends
    Timestamp m_seenAt = 0;    // steady time at which the occurrence was shown to operators
    bool m_isDoubtful = false; // the value cannot be judged
};

} // namespace Nodes
