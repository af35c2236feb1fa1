#pragma once

#include "nodes/alarms/engine/AlarmFeed.h"
#include "nodes/alarms/engine/AlarmOutbox.h"
#include "nodes/alarms/engine/AlarmTracker.h"
#include "nodes/alarms/engine/BuiltInAlarm.h"
#include "nodes/alarms/state/AlarmHealth.h"
#include "nodes/alarms/state/AlarmStateKeeper.h"
#include "nodes/timers/DeadlineThread.h"
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

/// Runs the alarms of a station: values come on the publishers' threads; delays, journal and
/// announcements are the work of one thread of its own, so that their order is the order of the
/// changes. That thread waits for no disk: the keeper of the states has its own. Holds copies of
/// the alarms' settings, no nodes. Start, Stop: GUI thread; rest: any.
class NODES_EXPORT AlarmEngine
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

    /// `journal` may be null; without a store nothing is kept over a restart.
    void Start(const std::vector<const BasicAlarm *> &alarms,
               const std::vector<BuiltInAlarm> &builtIn, EventJournal *journal,
               std::shared_ptr<AlarmStateStore> store);
    /// Announces and keeps what there is; see AlarmStateKeeper::Stop.
    void Stop();

    std::vector<BasicEvent> GetActive() const;
    /// The same for the alarms that watch this cell, in no order.
    std::vector<BasicEvent> GetActive(const ValueCell &cell) const;
    AlarmHealth GetHealth() const;
    /// Runs the operation on one alarm, alone. NotAvailable when stopped, NotFound for strangers.
    [[nodiscard]] Result Operate(const NodeLink &alarm, const Operation &operation);
    /// The same for many alarms in one step that nothing comes between. `results` has one for each
    /// alarm; those that are failures already are left alone.
    void Operate(const std::vector<unsigned long> &alarms, const BatchOperation &operation,
                 std::vector<Result> &results);
    Connection Connect(Slot slot) { return m_outbox.Connect(std::move(slot)); }
    /// Stores an entry about the alarms in general.
    void Report(EventLevel level, const std::string &text, const NodeLink &source = {},
                const std::string &user = {}, EventType type = TypeSystemState);

    // For AlarmFeed.
    std::shared_ptr<AlarmFeedQueue> OpenFeed(AlarmFeed::Wake wake);
    void CloseFeed(const std::shared_ptr<AlarmFeedQueue> &queue);
    AlarmFeed::Batch Take(AlarmFeedQueue &queue, std::size_t limit);

private:
    struct Watch;

    void load(AlarmStateStore &store, AlarmStateStore::Memories &memories);
    void restore(const AlarmStateStore::Memories &memories);
    void onKeepingTrouble(const std::string &trouble);
    void onStoreLacking(const std::string &setAside);
    void reportSetAside(const std::string &file);
    void keep(const Watch &watch);
    void subscribe(Watch &watch);
    void judge(Watch &watch);
    template <class Step> void step(Watch &watch, Step run);
    void schedule(Watch &watch);
    [[nodiscard]] Result operate(unsigned long alarm, const Operation &operation);
    void send(const Watch &watch, AlarmTracker::Records records);
    void tellDoubt(const Watch &watch);
    Timestamp work();
    std::vector<const Watch *> activeByChange() const;

    mutable std::mutex m_mutex;
    std::vector<std::unique_ptr<Watch>> m_watches;
    std::unordered_map<unsigned long, Watch *> m_byNode;
    std::unordered_multimap<const ValueCell *, Watch *> m_byCell;
    std::set<std::pair<Timestamp, Watch *>> m_deadlines;
    AlarmOutbox m_outbox;
    unsigned long m_lastOccurrence = 0;
    bool m_isRunning = false;

    AlarmStateKeeper m_keeper;
    DeadlineThread m_thread;
};

} // namespace Nodes
