#include "nodes/alarms/engine/AlarmEngine.h"

#include "nodes/alarms/engine/AlarmFeedQueue.h"
#include "nodes/alarms/engine/AlarmTuningRules.h"
#include "nodes/alarms/state/MissingAlarms.h"
#include "nodes/model/ConfigNodeJournal.h"
#include "nodes/values/Clock.h"
#include "nodes/values/ValueCell.h"

#include <algorithm>

namespace Nodes {

AlarmEngine::AlarmEngine() = default;

AlarmEngine::~AlarmEngine()
{
    Stop();
}

void AlarmEngine::Start(const std::vector<AlarmInputs> &alarms, EventJournal *journal,
                        std::shared_ptr<AlarmStateStore> store)
{
    Stop();
    m_outbox.SetJournal(journal);
    {
        const std::lock_guard lock(m_mutex);
        for (const AlarmInputs &alarm : alarms)
            m_alarms.Add(alarm, m_lastOccurrence);
        m_outbox.BeginFeedsAnew(m_alarms.All().size());
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
    for (const auto &watch : m_alarms.All())
        subscribe(*watch);
    m_thread.Start([this] { return work(); });
}

void AlarmEngine::Stop()
{
    // Ended without the lock: a publisher may be waiting for it inside its subscription.
    for (const auto &watch : m_alarms.All()) {
        watch->value.Disconnect();
        watch->reference.Disconnect();
        watch->suppressor.Disconnect();
    }
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
        if (!m_alarms.All().empty())
            m_outbox.BeginFeedsAnew(0);
        m_alarms.Clear();
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
        WatchedAlarm *found = m_alarms.Find(node);
        if (!found) {
            missing.Keep(node, stored, now.wall);
            continue;
        }
        WatchedAlarm &watch = *found;
        const std::string &path = watch.tracker.GetSettings().source;
        if (missing.IsAnothers(node, stored, path))
            continue;
        AlarmMemory memory = stored.memory;
        memory.isSuppressedByDesign = memory.isSuppressedByDesign && watch.inputs.suppressor;
        tellOverruled(watch, watch.tracker.Restore(memory, now));
        schedule(watch);
        if (stored.missingSince != 0 || stored.path != path ||
            watch.tracker.GetMemory() != stored.memory)
            keep(watch);
        if (watch.tracker.GetState() != AlarmState::Normal)
            m_outbox.AddChange(watch.place, watch.tracker.GetRecord(), false);
    }
}

void AlarmEngine::tellOverruled(const WatchedAlarm &watch, const AlarmTuning &dropped)
{
    const AlarmSettings &settings = watch.tracker.GetSettings();
    if (!dropped.isEmpty())
        Report(LevelWarning, AlarmTuningRules::Overruled(settings, dropped), settings.node);
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
    for (const auto &watch : m_alarms.All())
        keep(*watch);
}

void AlarmEngine::keep(const WatchedAlarm &watch)
{
    m_keeper.Put(watch.NodeId(), {watch.tracker.GetMemory(), watch.tracker.GetSettings().source});
}

void AlarmEngine::subscribe(WatchedAlarm &watch)
{
    const AlarmInputs &inputs = watch.inputs;
    const auto listen = [&](const std::shared_ptr<ValueCell> &cell, ValueSubscription &subscription,
                            void (WatchedAlarm::*judge)(const AlarmMoment &, Records &)) {
        if (!cell)
            return;
        const auto changed = [this, &watch, judge](const SignalValue &) {
            run(watch, [&watch, judge](AlarmTracker &, const AlarmMoment &now, Records &records) {
                (watch.*judge)(now, records);
            });
        };
        subscription.Connect(cell, changed, ValueFeed::Measured);
        changed({});
    };
    listen(inputs.suppressor, watch.suppressor, &WatchedAlarm::JudgeSuppressor);
    listen(inputs.reference, watch.reference, &WatchedAlarm::JudgeReference);
    listen(inputs.cell, watch.value, &WatchedAlarm::JudgeValue);
}

template <class Step> void AlarmEngine::run(WatchedAlarm &watch, Step change)
{
    const AlarmMoment now = AlarmMoment::Now();
    bool isCalling = false;
    {
        const std::lock_guard lock(m_mutex);
        const Timestamp earliest =
            m_deadlines.empty() ? DeadlineThread::Never : m_deadlines.begin()->first;
        step(watch, now, change);
        isCalling = !m_outbox.IsEmpty() || watch.deadline < earliest;
    }
    if (isCalling)
        m_thread.Wake();
}

/// That the value cannot be judged, or can again, is told to lists. It happens to every alarm of a
/// device whose connection blinks: the journal has the loss itself, from the driver.
void AlarmEngine::tellDoubt(const WatchedAlarm &watch)
{
    if (!watch.tracker.isListed())
        return;
    BasicEvent shown = watch.tracker.GetRecord();
    shown.type = TypeAlarmState;
    m_outbox.AddChange(watch.place, std::move(shown), false);
}

// Of an acknowledgement the journal keeps the deed, while lists are told how the alarm stands.
void AlarmEngine::send(const WatchedAlarm &watch, Records records, const AlarmMoment &now)
{
    for (BasicEvent &record : records) {
        if (record.type == TypeAlarmActive)
            m_flood.Add(now.steady, now.wall);
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

template <class Step>
void AlarmEngine::step(WatchedAlarm &watch, const AlarmMoment &now, Step change)
{
    Records records;
    const AlarmMemory before = watch.tracker.GetMemory();
    const bool wasDoubtful = watch.tracker.isDoubtful();
    change(watch.tracker, now, records);
    if (watch.tracker.GetMemory() != before)
        keep(watch);
    schedule(watch);
    if (records.empty() && watch.tracker.isDoubtful() != wasDoubtful)
        tellDoubt(watch);
    send(watch, std::move(records), now);
}

void AlarmEngine::schedule(WatchedAlarm &watch)
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
    std::optional<AlarmFloodWatch> flood;
    {
        const std::lock_guard lock(m_mutex);
        while (!m_deadlines.empty() && m_deadlines.begin()->first <= now.steady) {
            step(*m_deadlines.begin()->second, now,
                 [](AlarmTracker &tracker, const AlarmMoment &at, Records &records) {
                     tracker.Tick(at, records);
                 });
        }
        load = m_outbox.Take();
        m_flood.Advance(now.steady, now.wall);
        next = m_flood.Deadline();
        flood = m_flood;
        if (!m_deadlines.empty())
            next = std::min(next, m_deadlines.begin()->first);
    }
    m_outbox.Deliver(load);
    m_floodTeller.Tell(*flood, now.steady, [this](bool isFlood, const std::string &text) {
        Report(isFlood ? LevelWarning : LevelInformation, text);
    });
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

void AlarmEngine::SetFloodLimits(int begin, int end)
{
    const std::lock_guard lock(m_mutex);
    m_flood.SetLimits(begin, end);
}

Result AlarmEngine::Tune(const NodeLink &alarm, const std::optional<AlarmTuning> &wanted,
                         const std::string &user)
{
    return Operate(alarm, [&](AlarmTracker &tracker, const AlarmMoment &now, Records &records) {
        const AlarmTuning &numbers = wanted ? *wanted : tracker.GetMemory().Deeds().project;
        const Result inOrder = m_alarms.CheckOrder(alarm.GetNodeId(), numbers);
        if (!inOrder)
            return inOrder;
        return wanted ? tracker.Tune(*wanted, user, now, records)
                      : tracker.RevertTuning(user, now, records);
    });
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
            results[i] = operate(
                alarms[i], [&](AlarmTracker &tracker, const AlarmMoment &now, Records &records) {
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
    WatchedAlarm *watch = m_alarms.Find(alarm);
    if (!watch)
        return Result(Result::NotFound, "no alarm " + std::to_string(alarm));
    Result result;
    step(*watch, AlarmMoment::Now(),
         [&](AlarmTracker &tracker, const AlarmMoment &now, Records &records) {
             result = operation(tracker, now, records);
         });
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
        queue->Reset(m_alarms.All().size());
        for (const WatchedAlarm *watch : m_alarms.ActiveByChange())
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
        batch.alarms.push_back(m_alarms.At(place).tracker.GetRecord());
    return batch;
}

} // namespace Nodes
