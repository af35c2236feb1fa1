#pragma once

#include "nodes/alarms/engine/AlarmFeed.h"
#include "nodes/alarms/engine/AlarmFloodTeller.h"
#include "nodes/alarms/engine/AlarmInputs.h"
#include "nodes/alarms/engine/AlarmOutbox.h"
#include "nodes/alarms/engine/AlarmTracker.h"
#include "nodes/alarms/engine/WatchedAlarms.h"
#include "nodes/alarms/state/AlarmHealth.h"
#include "nodes/alarms/state/AlarmStateKeeper.h"
#include "nodes/timers/DeadlineThread.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

namespace Nodes {

class EventJournal;
class ValueCell;

/// Runs the alarms of a station: values come on the publishers' threads; delays, journal and
/// announcements are the work of one thread of its own, so that their order is the order of the
/// changes. That thread waits for no disk: the keeper of the states has its own. Holds copies of
/// the alarms' settings, no nodes. Start, Stop: GUI thread; rest: any.
class NODES_EXPORT AlarmEngine
{
    template <class Question> auto ask(Question question) const
    {
        const std::lock_guard lock(m_mutex);
        return question(m_alarms);
    }

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
    void Start(const std::vector<AlarmInputs> &alarms, EventJournal *journal,
               std::shared_ptr<AlarmStateStore> store);
    /// Announces and keeps what there is; see AlarmStateKeeper::Stop.
    void Stop();

    std::vector<BasicEvent> GetActive() const { return ask(std::mem_fn(&WatchedAlarms::Active)); }
    /// The same for the alarms that watch this cell, in no order.
    std::vector<BasicEvent> GetActive(const ValueCell &cell) const
    {
        return ask([&](const WatchedAlarms &alarms) { return alarms.ActiveOf(cell); });
    }
    /// Those that are hidden from the operators, latest change first.
    std::vector<BasicEvent> GetHidden() const { return ask(std::mem_fn(&WatchedAlarms::Hidden)); }
    AlarmHealth GetHealth() const;
    /// Before Start.
    void SetFloodLimits(int begin, int end);
    AlarmFlood GetFlood() const
    {
        return ask([this](const WatchedAlarms &) { return m_flood.GetFlood(); });
    }
    Connection ConnectFlood(std::function<void(const AlarmFlood &)> slot)
    {
        return m_floodTeller.Connect(std::move(slot));
    }
    std::vector<TunedAlarm> GetTuned() const { return ask(std::mem_fn(&WatchedAlarms::Tuned)); }
    /// Empty for strangers.
    AlarmTuning GetTuning(unsigned long alarm) const
    {
        return ask([=](const WatchedAlarms &alarms) { return alarms.TuningOf(alarm); });
    }
    /// Nothing wanted: as the project has it again.
    [[nodiscard]] Result Tune(const NodeLink &alarm, const std::optional<AlarmTuning> &wanted,
                              const std::string &user);
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
    using Records = AlarmTracker::Records;

    void load(AlarmStateStore &store, AlarmStateStore::Memories &memories);
    void restore(const AlarmStateStore::Memories &memories);
    void tellOverruled(const WatchedAlarm &watch, const AlarmTuning &dropped);
    void onKeepingTrouble(const std::string &trouble);
    void onStoreLacking(const std::string &setAside);
    void reportSetAside(const std::string &file);
    void keep(const WatchedAlarm &watch);
    void subscribe(WatchedAlarm &watch);
    template <class Step> void run(WatchedAlarm &watch, Step change);
    template <class Step> void step(WatchedAlarm &watch, const AlarmMoment &now, Step change);
    void schedule(WatchedAlarm &watch);
    [[nodiscard]] Result operate(unsigned long alarm, const Operation &operation);
    void send(const WatchedAlarm &watch, Records records, const AlarmMoment &now);
    void tellDoubt(const WatchedAlarm &watch);
    Timestamp work();

    mutable std::mutex m_mutex;
    WatchedAlarms m_alarms;
    std::set<std::pair<Timestamp, WatchedAlarm *>> m_deadlines;
    AlarmOutbox m_outbox;
    unsigned long m_lastOccurrence = 0;
    bool m_isRunning = false;
    AlarmFloodWatch m_flood{10, 5};

    AlarmFloodTeller m_floodTeller; // the engine's thread
    AlarmStateKeeper m_keeper;
    DeadlineThread m_thread;
};

} // namespace Nodes
