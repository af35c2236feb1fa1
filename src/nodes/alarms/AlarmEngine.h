#pragma once

#include "nodes/alarms/AlarmStateStore.h"
#include "nodes/alarms/AlarmTracker.h"
#include "nodes/timers/DeadlineThread.h"
#include "nodes/values/SlotList.h"
#include "nodes/values/ValueSubscription.h"

#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <unordered_map>
#include <vector>

namespace Nodes {

class BasicAlarm;
class EventJournal;
class ValueCell;

/// Runs the alarms of a station: values come on the publishers' threads; delays, journal, file and
/// announcements are the work of one thread of its own, so that their order is the order of the
/// changes. Holds copies of the alarms' settings, no nodes. Start, Stop: GUI thread; rest: any.
class AlarmEngine
{
public:
    using Slot = std::function<void(const BasicEvent &)>;
    using Operation =
        std::function<Result(AlarmTracker &, const AlarmMoment &, AlarmTracker::Records &)>;
    /// The same with the place of the alarm in its batch.
    using BatchOperation = std::function<Result(std::size_t index, AlarmTracker &,
                                                const AlarmMoment &, AlarmTracker::Records &)>;

    AlarmEngine();
    ~AlarmEngine();

    /// `journal` may be null; "" as `stateFile` keeps nothing over a restart.
    void Start(const std::vector<const BasicAlarm *> &alarms, EventJournal *journal,
               const std::string &stateFile);
    void Stop();

    std::vector<BasicEvent> GetActive() const;
    /// The same for the alarms that watch this cell, in no order.
    std::vector<BasicEvent> GetActive(const ValueCell &cell) const;
    /// Runs the operation on one alarm, alone. NotAvailable when stopped, NotFound for strangers.
    [[nodiscard]] Result Operate(const NodeLink &alarm, const Operation &operation);
    /// The same for many alarms in one step that nothing comes between. `results` has one for each
    /// alarm; those that are failures already are left alone.
    void Operate(const std::vector<unsigned long> &alarms, const BatchOperation &operation,
                 std::vector<Result> &results);
    Connection Connect(Slot slot) { return m_announced.Connect(std::move(slot)); }
    /// Stores an entry about the alarms in general.
    void Report(EventLevel level, const std::string &text, const NodeLink &source = {},
                const std::string &user = {}, EventType type = TypeSystemState);

private:
    struct Watch;
    struct Outgoing
    {
        BasicEvent event;
        bool isJournalled;
        bool isAnnounced;
    };

    void send(const AlarmTracker &tracker, AlarmTracker::Records records);
    void restore(const std::string &stateFile);
    void restore(Watch &watch, const StoredAlarm &stored, const AlarmMoment &now);
    void keepMissing(unsigned long node, const StoredAlarm &stored, Timestamp now);
    void forget(unsigned long node, const StoredAlarm &stored, const std::string &why);
    void subscribe(Watch &watch);
    void judge(Watch &watch);
    void announceDoubt(const AlarmTracker &tracker);
    [[nodiscard]] Result operate(unsigned long alarm, const Operation &operation);
    template <class Step> void step(Watch &watch, Step run);
    Timestamp work();
    void save(const AlarmStateStore::Memories &memories);

    mutable std::mutex m_mutex;
    std::vector<std::unique_ptr<Watch>> m_watches;
    std::unordered_map<unsigned long, Watch *> m_byNode;
    std::unordered_multimap<const ValueCell *, Watch *> m_byCell;
    std::set<std::pair<Timestamp, Watch *>> m_deadlines;
    std::vector<Outgoing> m_outbox;
    AlarmStateStore::Memories m_unsaved;
    unsigned long m_lastOccurrence = 0;
    bool m_isRunning = false;

    EventJournal *m_journal = nullptr;
    AlarmStateStore m_store;
    bool m_isSaveFailing = false;
    SlotList<const BasicEvent &> m_announced;
    DeadlineThread m_thread;
};

} // namespace Nodes
