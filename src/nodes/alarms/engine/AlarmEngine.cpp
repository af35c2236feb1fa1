#include "nodes/alarms/engine/AlarmEngine.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/engine/AlarmFeedQueue.h"
#include "nodes/alarms/state/MissingAlarms.h"
#include "nodes/model/ConfigNodeJournal.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"

#include <algorithm>

namespace Nodes {

struct AlarmEngine::Watch
{
    Watch(const BuiltInAlarm &alarm, std::size_t number, unsigned long &lastOccurrence)
        : tracker(alarm.settings, lastOccurrence), cell(alarm.cell), place(number)
    {
    }
    unsigned long NodeId() const { return tracker.GetSettings().node.GetNodeId(); }

    AlarmTracker tracker;
    std::shared_ptr<ValueCell> cell;
    const std::size_t place; // in m_watches
    ValueSubscription subscription;
    Timestamp deadline = DeadlineThread::Never;
};

AlarmEngine::AlarmEngine() = default;

AlarmEngine::~AlarmEngine()
{
    Stop();
}

void AlarmEngine::Start(const std::vector<const BasicAlarm *> &alarms,
                        const std::vector<BuiltInAlarm> &builtIn, EventJournal *journal,
                        std::shared_ptr<AlarmStateStore> store)
{
    Stop();
    m_outbox.SetJournal(journal);
    {
        const std::lock_guard lock(m_mutex);
        std::vector<BuiltInAlarm> all = builtIn;
        for (const BasicAlarm *alarm : alarms)
            all.push_back({AlarmSettings::Of(*alarm), alarm->GetSignal()->GetCell()});
        for (const BuiltInAlarm &alarm : all) {
            m_watches.push_back(std::make_unique<Watch>(alarm, m_watches.size(), m_lastOccurrence));
            Watch *watch = m_watches.back().get();
            m_byNode[watch->NodeId()] = watch;
            m_byCell.emplace(alarm.cell.get(), watch);
        }
        m_outbox.BeginFeedsAnew(m_watches.size());
    }
    AlarmStateStore::Memories memories;
    if (store)
        load(*store, memories);
    m_keeper.Start(std::move(store),
                   {[this](const std::string &trouble) { onKeepingTrouble(trouble); },
                    [this](const std::string &setAside) { onStoreLacking(setAside); }});
    {
        const std::lock_guard lock(m_mutex);
        restore(memories);
        m_isRunning = true;
    }
    for (const auto &watch : m_watches)
        subscribe(*watch);
    m_thread.Start([this] { return work(); });
}

void AlarmEngine::Stop()
{
    // Ended without the lock: a publisher may be waiting for it inside its subscription.
    for (const auto &watch : m_watches)
        watch->subscription.Disconnect();
    m_thread.Stop();
    {
        // No operation may follow the last work: it would be confirmed but never recorded.
        const std::lock_guard lock(m_mutex);
        m_isRunning = false;
    }
    (void)work();
    if (!m_keeper.Stop())
        Report(LevelWarning, "Последние состояния тревог не сохранены");
    AlarmOutbox::Load load;
    {
        const std::lock_guard lock(m_mutex);
        m_deadlines.clear();
        m_byNode.clear();
        m_byCell.clear();
        if (!m_watches.empty())
            m_outbox.BeginFeedsAnew(0);
        m_watches.clear();
        load = m_outbox.Take();
    }
    m_outbox.Deliver(load);
}

/// The start waits for the file: what was acknowledged or set aside must not be heard of again.
void AlarmEngine::load(AlarmStateStore &store, AlarmStateStore::Memories &memories)
{
    StoreOpening opening;
    Result result = store.Open(opening);
    if (!opening.setAside.empty())
        reportSetAside(opening.setAside);
    unsigned long lastOccurrence = 0;
    if (result)
        result = store.Load(memories, lastOccurrence);
    m_lastOccurrence = std::max(m_lastOccurrence, lastOccurrence); // no alarm runs yet
    if (!result) {
        store.Close();
        onKeepingTrouble(result.GetDetail());
    }
}

void AlarmEngine::restore(const AlarmStateStore::Memories &memories)
{
    const MissingAlarms missing(
        [this](unsigned long node, StoredAlarm state) { m_keeper.Put(node, std::move(state)); },
        [this](const std::string &text) { Report(LevelWarning, text); });
    const AlarmMoment now = AlarmMoment::Now();
    for (const auto &[node, stored] : memories) {
        m_lastOccurrence = std::max(m_lastOccurrence, stored.memory.occurrence);
        const auto found = m_byNode.find(node);
        if (found == m_byNode.end()) {
            missing.Keep(node, stored, now.wall);
            continue;
        }
        Watch &watch = *found->second;
        const std::string &path = watch.tracker.GetSettings().source;
        if (missing.IsAnothers(node, stored, path))
            continue;
        watch.tracker.Restore(stored.memory, now);
        schedule(watch);
        if (stored.missingSince != 0 || stored.path != path)
            keep(watch);
        m_outbox.AddChange(watch.place, watch.tracker.GetRecord(), false);
    }
}

void AlarmEngine::onKeepingTrouble(const std::string &trouble)
{
    if (trouble.empty())
        Report(LevelInformation, "Состояния тревог снова сохраняются");
    else
        Report(LevelWarning, "Состояния тревог не сохраняются: " + trouble);
}

void AlarmEngine::reportSetAside(const std::string &file)
{
    Report(LevelCritical, "Файл состояний тревог повреждён и отложен: " + file);
}

/// What the operators have seen since the start counts, not what an earlier run left in the file.
void AlarmEngine::onStoreLacking(const std::string &setAside)
{
    if (!setAside.empty())
        reportSetAside(setAside);
    const std::lock_guard lock(m_mutex);
    for (const auto &watch : m_watches)
        keep(*watch);
}

void AlarmEngine::keep(const Watch &watch)
{
    m_keeper.Put(watch.NodeId(), {watch.tracker.GetMemory(), watch.tracker.GetSettings().source});
}

void AlarmEngine::subscribe(Watch &watch)
{
    watch.subscription.Connect(
        watch.cell, [this, &watch](const SignalValue &) { judge(watch); }, ValueFeed::Measured);
    judge(watch);
}

void AlarmEngine::judge(Watch &watch)
{
    const AlarmMoment now = AlarmMoment::Now();
    bool isCalling = false;
    {
        const std::lock_guard lock(m_mutex);
        const Timestamp earliest =
            m_deadlines.empty() ? DeadlineThread::Never : m_deadlines.begin()->first;
        AlarmTracker::Records records;
        const bool wasDoubtful = watch.tracker.isDoubtful();
        // The cell knows the later of two values; measured: a deadband must not hide a limit.
        step(watch,
             [&](AlarmTracker &tracker) { tracker.Judge(watch.cell->Measured(), now, records); });
        if (records.empty() && watch.tracker.isDoubtful() != wasDoubtful)
            tellDoubt(watch);
        send(watch, std::move(records));
        isCalling = !m_outbox.IsEmpty() || watch.deadline < earliest;
    }
    if (isCalling)
        m_thread.Wake();
}

/// That the value cannot be judged, or can again, is told to lists. It happens to every alarm of a
/// device whose connection blinks: the journal has the loss itself, from the driver.
void AlarmEngine::tellDoubt(const Watch &watch)
{
    if (!watch.tracker.isListed())
        return;
    BasicEvent shown = watch.tracker.GetRecord();
    shown.type = TypeAlarmState;
    m_outbox.AddChange(watch.place, std::move(shown), false);
}

// Of an acknowledgement the journal keeps the deed, while lists are told how the alarm stands.
void AlarmEngine::send(const Watch &watch, AlarmTracker::Records records)
{
    for (BasicEvent &record : records) {
        if (record.type != TypeAcknowledgement) {
            m_outbox.AddChange(watch.place, std::move(record), true);
            continue;
        }
        BasicEvent shown = watch.tracker.GetRecord();
        shown.type = record.type;
        shown.user = record.user;
        m_outbox.AddDeed(std::move(record));
        m_outbox.AddChange(watch.place, std::move(shown), false);
    }
}

template <class Step> void AlarmEngine::step(Watch &watch, Step run)
{
    const AlarmMemory before = watch.tracker.GetMemory();
    run(watch.tracker);
    if (watch.tracker.GetMemory() != before)
        keep(watch);
    schedule(watch);
}

void AlarmEngine::schedule(Watch &watch)
{
    const Timestamp deadline = watch.tracker.Deadline();
    if (deadline == watch.deadline)
        return;
    m_deadlines.erase({watch.deadline, &watch});
    watch.deadline = deadline;
    if (deadline != DeadlineThread::Never)
        m_deadlines.insert({deadline, &watch});
}

Timestamp AlarmEngine::work()
{
    const AlarmMoment now = AlarmMoment::Now();
    AlarmOutbox::Load load;
    Timestamp next = DeadlineThread::Never;
    {
        const std::lock_guard lock(m_mutex);
        while (!m_deadlines.empty() && m_deadlines.begin()->first <= now.steady) {
            Watch &due = *m_deadlines.begin()->second;
            AlarmTracker::Records records;
            step(due, [&](AlarmTracker &tracker) { tracker.Tick(now, records); });
            send(due, std::move(records));
        }
        load = m_outbox.Take();
        if (!m_deadlines.empty())
            next = m_deadlines.begin()->first;
    }
    m_outbox.Deliver(load);
    if (m_keeper.IsFoundHanging())
        onKeepingTrouble("диск не отвечает");
    return next;
}

AlarmHealth AlarmEngine::GetHealth() const
{
    AlarmHealth health;
    {
        const std::lock_guard lock(m_mutex);
        m_outbox.Describe(health);
    }
    m_keeper.Describe(health);
    return health;
}

std::vector<const AlarmEngine::Watch *> AlarmEngine::activeByChange() const
{
    std::vector<const Watch *> active;
    for (const auto &watch : m_watches) {
        if (watch->tracker.GetState() != AlarmState::Normal)
            active.push_back(watch.get());
    }
    std::stable_sort(active.begin(), active.end(), [](const Watch *a, const Watch *b) {
        return a->tracker.GetMemory().changed > b->tracker.GetMemory().changed;
    });
    return active;
}

std::vector<BasicEvent> AlarmEngine::GetActive() const
{
    std::vector<BasicEvent> active;
    const std::lock_guard lock(m_mutex);
    for (const Watch *watch : activeByChange())
        active.push_back(watch->tracker.GetRecord());
    return active;
}

std::vector<BasicEvent> AlarmEngine::GetActive(const ValueCell &cell) const
{
    std::vector<BasicEvent> active;
    const std::lock_guard lock(m_mutex);
    for (auto [watch, end] = m_byCell.equal_range(&cell); watch != end; ++watch) {
        if (watch->second->tracker.GetState() != AlarmState::Normal)
            active.push_back(watch->second->tracker.GetRecord());
    }
    return active;
}

Result AlarmEngine::Operate(const NodeLink &alarm, const Operation &operation)
{
    std::unique_lock lock(m_mutex);
    const Result result = operate(alarm.GetNodeId(), operation);
    lock.unlock();
    m_thread.Wake();
    return result;
}

void AlarmEngine::Operate(const std::vector<unsigned long> &alarms, const BatchOperation &operation,
                          std::vector<Result> &results)
{
    results.resize(alarms.size());
    {
        const std::lock_guard lock(m_mutex);
        for (std::size_t i = 0; i < alarms.size(); ++i) {
            if (!results[i])
                continue;
            results[i] = operate(alarms[i], [&](AlarmTracker &tracker, const AlarmMoment &now,
                                                AlarmTracker::Records &records) {
                return operation(i, tracker, now, records);
            });
        }
    }
    m_thread.Wake();
}

Result AlarmEngine::operate(unsigned long alarm, const Operation &operation)
{
    if (!m_isRunning)
        return Result(Result::NotAvailable, "alarming is not running");
    const auto found = m_byNode.find(alarm);
    if (found == m_byNode.end())
        return Result(Result::NotFound, "no alarm " + std::to_string(alarm));
    Result result;
    AlarmTracker::Records records;
    step(*found->second,
         [&](AlarmTracker &tracker) { result = operation(tracker, AlarmMoment::Now(), records); });
    send(*found->second, std::move(records));
    return result;
}

void AlarmEngine::Report(EventLevel level, const std::string &text, const NodeLink &source,
                         const std::string &user, EventType type)
{
    BasicEvent event = EventAt(source, level, text, type);
    if (source.isEmpty())
        event.source = "Тревоги";
    event.user = user;
    m_outbox.Journal(event);
}

std::shared_ptr<AlarmFeedQueue> AlarmEngine::OpenFeed(AlarmFeed::Wake wake)
{
    auto queue = std::make_shared<AlarmFeedQueue>(std::move(wake));
    {
        const std::lock_guard lock(m_mutex);
        queue->Reset(m_watches.size());
        for (const Watch *watch : activeByChange())
            queue->Add(watch->place);
        m_outbox.AddFeed(queue);
    }
    m_thread.Wake();
    return queue;
}

void AlarmEngine::CloseFeed(const std::shared_ptr<AlarmFeedQueue> &queue)
{
    {
        const std::lock_guard lock(m_mutex);
        m_outbox.RemoveFeed(queue);
    }
    queue->Close();
}

AlarmFeed::Batch AlarmEngine::Take(AlarmFeedQueue &queue, std::size_t limit)
{
    AlarmFeed::Batch batch;
    const std::lock_guard lock(m_mutex);
    const std::vector<std::size_t> places = queue.Take(limit, batch);
    batch.alarms.reserve(places.size());
    for (const std::size_t place : places)
        batch.alarms.push_back(m_watches[place]->tracker.GetRecord());
    return batch;
}

} // namespace Nodes
