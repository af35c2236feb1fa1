#pragma once

#include "nodes/alarms/TunedAlarm.h"
#include "nodes/alarms/engine/AlarmInputs.h"
#include "nodes/alarms/engine/AlarmTracker.h"
#include "nodes/timers/DeadlineThread.h"
#include "nodes/values/ValueSubscription.h"

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

namespace Nodes {

struct FirstUpGroup;

/// One alarm that the engine watches.
struct WatchedAlarm
{
    WatchedAlarm(AlarmInputs alarm, std::size_t number, unsigned long &lastOccurrence);
    unsigned long NodeId() const { return tracker.GetSettings().node.GetNodeId(); }

    // The cells know the later of two values; measured: a deadband must not hide a limit.
    void JudgeValue(const AlarmMoment &now, AlarmTracker::Records &records);
    void JudgeReference(const AlarmMoment &now, AlarmTracker::Records &records);
    /// Before the signal's first value what was before the restart holds; one that is bad or stale
    /// suppresses nothing.
    void JudgeSuppressor(const AlarmMoment &now, AlarmTracker::Records &records);

    AlarmTracker tracker;
    const AlarmInputs inputs;
    const std::size_t place; // in WatchedAlarms
    ValueSubscription value;
    ValueSubscription reference;
    ValueSubscription suppressor;
    Timestamp deadline = DeadlineThread::Never;
};

/// The alarms of an engine, found in several ways. Guarded by the engine's lock.
class NODES_EXPORT WatchedAlarms
{
public:
    using Alarms = std::vector<std::unique_ptr<WatchedAlarm>>;

    void Add(const AlarmInputs &alarm, unsigned long &lastOccurrence);
    void Clear();
    const Alarms &All() const { return m_alarms; }
    WatchedAlarm &At(std::size_t place) const { return *m_alarms[place]; }
    /// Null for strangers.
    WatchedAlarm *Find(unsigned long node) const;

    /// Those that are not Normal, latest change first.
    std::vector<const WatchedAlarm *> ActiveByChange() const;
    std::vector<BasicEvent> Active() const;
    /// The same of those that watch this cell, in no order.
    std::vector<BasicEvent> ActiveOf(const ValueCell &cell) const;
    /// Those that are shelved, suppressed or out of service, latest change first.
    std::vector<BasicEvent> Hidden() const;
    std::vector<TunedAlarm> Tuned() const;
    AlarmTuning TuningOf(unsigned long node) const;
    /// OutOfRange, with a Russian text, when the limit would not fit between the other limits on
    /// the signal of this alarm: HH above H above L above LL.
    [[nodiscard]] Result CheckOrder(unsigned long node, const AlarmTuning &wanted) const;

private:
    Alarms m_alarms;
    std::unordered_map<unsigned long, WatchedAlarm *> m_byNode;
    std::unordered_multimap<const ValueCell *, WatchedAlarm *> m_byCell;
    std::map<std::string, std::shared_ptr<FirstUpGroup>> m_groups;
};

} // namespace Nodes
