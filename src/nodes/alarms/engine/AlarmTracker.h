#pragma once

#include "nodes/alarms/AlarmSettings.h"
#include "nodes/alarms/AlarmTuning.h"
#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/alarms/engine/AlarmMemory.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/values/Result.h"
#include "nodes/values/SignalValue.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Nodes {

struct FirstUpGroup;

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
///
/// Samples of an archive are judged by the same code: for each sample of one alarm in order of time
/// first `while (tracker.Deadline() <= t) tracker.Tick(at(tracker.Deadline()), records)`, then
/// Judge (or JudgeReference) at t, with the sample's time on both clocks.
class NODES_EXPORT AlarmTracker
{
public:
    using Records = std::vector<BasicEvent>;

    /// `lastOccurrence` is shared by the alarms of a station and outlives the tracker.
    AlarmTracker(AlarmSettings settings, unsigned long &lastOccurrence);
    AlarmTracker(const AlarmTracker &) = delete;
    AlarmTracker &operator=(const AlarmTracker &) = delete;

    /// Before anything is judged. The group outlives the tracker's work.
    void Join(std::shared_ptr<FirstUpGroup> group) { m_group = std::move(group); }
    /// Returns what was tuned but is overruled, because the project says something else than it did
    /// when it was tuned.
    AlarmTuning Restore(const AlarmMemory &memory, const AlarmMoment &now);
    const AlarmMemory &GetMemory() const { return m_memory; }
    const AlarmSettings &GetSettings() const { return m_settings; }

    /// Takes the signal's latest value. That it cannot be judged, or can again, shows in the text
    /// (see isDoubtful) and is no change of state.
    void Judge(const SignalValue &value, const AlarmMoment &now, Records &records);
    /// The same of the signal that the condition compares with.
    void JudgeReference(const SignalValue &value, const AlarmMoment &now, Records &records);
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
    /// NotFound when there is nothing to reset; Refused while its condition is there or it is not
    /// acknowledged.
    [[nodiscard]] Result Reset(const std::string &user, const AlarmMoment &now, Records &records);
    void Shelve(Timestamp duration, const std::string &user, const AlarmMoment &now,
                Records &records, const std::string &reason = {});
    void Unshelve(const std::string &user, const AlarmMoment &now, Records &records);
    void SetOutOfService(bool out, const std::string &user, const AlarmMoment &now,
                         Records &records, const std::string &reason = {});
    void SetSuppressed(bool suppressed, const std::string &user, const AlarmMoment &now,
                       Records &records, const std::string &reason = {});
    /// By the condition that the project names.
    void SuppressByDesign(bool suppressed, const AlarmMoment &now, Records &records);

    /// The numbers that count.
    const AlarmTuning &GetTuning() const { return m_tuning; }
    /// Takes over what is named, unless it is out of range; delays that run begin anew.
    [[nodiscard]] Result Tune(const AlarmTuning &wanted, const std::string &user,
                              const AlarmMoment &now, Records &records);
    /// As the project has it again.
    [[nodiscard]] Result RevertTuning(const std::string &user, const AlarmMoment &now,
                                      Records &records);

    AlarmState GetState() const { return m_memory.State(); }
    bool isShelved() const { return m_memory.shelvedUntil != 0; }
    /// The value cannot be judged, which the text of its records tells.
    bool isDoubtful() const { return m_isDoubtful; }
    /// Operators see it on their lists.
    bool isListed() const { return GetState() != AlarmState::Normal && !m_memory.isHidden(); }
    /// The alarm as a list shows it; its user is who acknowledged this occurrence.
    BasicEvent GetRecord() const;

private:
    using Edit = std::function<void()>;

    void judge(const AlarmMoment &now, Records &records);
    void flip(const AlarmMoment &now, Records &records);
    bool change(EventType type, const std::string &user, const AlarmMoment &now, Records &records,
                const Edit &edit);
    void operate(const std::string &what, const AlarmDeed &deed, const AlarmMoment &now,
                 Records &records, const Edit &edit);
    void follow(const AlarmMoment &now);
    void followGroup();
    void forgetAcknowledgement();
    void remind(const AlarmMoment &now, Records &records);
    void takeTuning();
    BasicEvent recordOf(EventType type, const std::string &user) const;
    void raise(const AlarmMoment &now);
    void clear(const AlarmMoment &now);

    AlarmSettings m_settings;
    std::unique_ptr<AlarmCondition> m_condition;
    AlarmTuning m_tuning; // what counts
    std::shared_ptr<FirstUpGroup> m_group;
    unsigned long &m_lastOccurrence;
    AlarmMemory m_memory;
    SignalValue m_value;
    SignalValue m_reference;
    Timestamp m_flipAt;        // steady time at which the pending change counts
    Timestamp m_unshelveAt;    // steady time at which shelving ends
    Timestamp m_remindAt;      // steady time at which it is announced again
    Timestamp m_lookAt;        // steady time at which the same value is judged again
    Timestamp m_seenAt = 0;    // steady time at which the occurrence was shown to operators
    bool m_isDoubtful = false; // the value cannot be judged
    bool m_isCounted = false;  // by the group, as listed
};

} // namespace Nodes
