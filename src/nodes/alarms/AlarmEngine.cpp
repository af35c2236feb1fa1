#include "nodes/alarms/AlarmEngine.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"

#include <algorithm>

namespace Nodes {

namespace {

AlarmSettings settingsOf(const BasicAlarm &alarm)
{
    AlarmSettings settings;
    settings.node = alarm.GetNodeLink();
    settings.source = alarm.GetPath();
    settings.text = alarm.GetText();
    settings.priority = alarm.GetPriority();
    settings.isAckRequired = alarm.isAckRequired();
    settings.onDelay = Timestamp(alarm.GetOnDelay()) * 1000;
    settings.offDelay = Timestamp(alarm.GetOffDelay()) * 1000;
    settings.condition = alarm.MakeCondition();
    return settings;
}

constexpr int missingDays = 90;

/// The alarm and what of its state was set by hand or waits for somebody.
std::string describe(unsigned long node, const StoredAlarm &stored)
{
    const AlarmMemory &memory = stored.memory;
    std::string text = "«" + stored.path + "» (узел " + std::to_string(node) + ")";
    if (memory.isOutOfService)
        text += ", выведена из работы";
    if (memory.isSuppressed)
        text += ", подавлена";
    if (memory.shelvedUntil != 0)
        text += ", отложена";
    if (memory.isActive)
        text += ", активна";
    return text + (memory.isAcked ? "" : ", не квитирована");
}

} // namespace

struct AlarmEngine::Watch
{
    Watch(const BasicAlarm &alarm, unsigned long &lastOccurrence)
        : tracker(settingsOf(alarm), lastOccurrence), cell(alarm.GetSignal()->GetCell())
    {
    }
    unsigned long NodeId() const { return tracker.GetSettings().node.GetNodeId(); }

    AlarmTracker tracker;
    std::shared_ptr<ValueCell> cell;
    ValueSubscription subscription;
    Timestamp deadline = DeadlineThread::Never;
};

AlarmEngine::AlarmEngine() = default;

AlarmEngine::~AlarmEngine()
{
    Stop();
}

void AlarmEngine::Start(const std::vector<const BasicAlarm *> &alarms, EventJournal *journal,
                        const std::string &stateFile)
{
    Stop();
    m_journal = journal;
    {
        const std::lock_guard lock(m_mutex);
        for (const BasicAlarm *alarm : alarms) {
            m_watches.push_back(std::make_unique<Watch>(*alarm, m_lastOccurrence));
            Watch *watch = m_watches.back().get();
            m_byNode[alarm->GetId()] = watch;
            m_byCell.emplace(watch->cell.get(), watch);
        }
        restore(stateFile);
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
    const std::lock_guard lock(m_mutex);
    m_deadlines.clear();
    m_byNode.clear();
    m_byCell.clear();
    m_watches.clear();
    m_store.Close();
}

void AlarmEngine::restore(const std::string &stateFile)
{
    if (stateFile.empty())
        return;
    std::string setAside;
    AlarmStateStore::Memories memories;
    Result result = m_store.Open(stateFile, setAside);
    if (!setAside.empty())
        Report(LevelCritical, "Файл состояний тревог повреждён и отложен: " + setAside);
    if (result)
        result = m_store.Load(memories);
    if (!result)
        Report(LevelWarning, "Состояния тревог не сохраняются: " + result.GetDetail());
    const AlarmMoment now = AlarmMoment::Now();
    for (const auto &[node, stored] : memories) {
        const auto found = m_byNode.find(node);
        if (found == m_byNode.end())
            keepMissing(node, stored, now.wall);
        else
            restore(*found->second, stored, now);
    }
}

void AlarmEngine::restore(Watch &watch, const StoredAlarm &stored, const AlarmMoment &now)
{
    const std::string &path = watch.tracker.GetSettings().source;
    // A deleted node's number may be given anew; a renamed node never was missing.
    if (stored.missingSince != 0 && stored.path != path) {
        forget(watch.NodeId(), stored, "её номер носит теперь другая тревога, «" + path + "»");
        return;
    }
    step(watch, [&](AlarmTracker &tracker) { tracker.Restore(stored.memory, now); });
    if (stored.missingSince != 0 || stored.path != path)
        m_unsaved[watch.NodeId()] = {watch.tracker.GetMemory(), path};
    else
        m_unsaved.erase(watch.NodeId());
    m_outbox.push_back({watch.tracker.GetRecord(), false, true});
}

/// An older or broken project may be a slip: what was set aside by hand must be there again with
/// the right one.
void AlarmEngine::keepMissing(unsigned long node, const StoredAlarm &stored, Timestamp now)
{
    if (stored.missingSince == 0) {
        m_unsaved[node] = stored;
        m_unsaved[node].missingSince = now;
        Report(LevelWarning,
               "Тревоги с сохранённым состоянием нет в проекте: " + describe(node, stored) +
                   ". Состояние хранится " + std::to_string(missingDays) + " дней.");
    } else if (now - stored.missingSince > Timestamp(missingDays) * 86400 * 1000000) {
        forget(node, stored, "её нет в проекте дольше " + std::to_string(missingDays) + " дней");
    }
}

void AlarmEngine::forget(unsigned long node, const StoredAlarm &stored, const std::string &why)
{
    m_unsaved[node] = StoredAlarm();
    Report(LevelWarning, "Состояние тревоги забыто: " + describe(node, stored) + "; " + why);
}

void AlarmEngine::subscribe(Watch &watch)
{
    watch.subscription.Connect(watch.cell, [this, &watch](const SignalValue &) { judge(watch); });
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
        // Two publishers may arrive in either order; the cell's own value is the later one.
        step(watch,
             [&](AlarmTracker &tracker) { tracker.Judge(watch.cell->Value(), now, records); });
        if (records.empty() && watch.tracker.isDoubtful() != wasDoubtful)
            announceDoubt(watch.tracker);
        send(watch.tracker, std::move(records));
        isCalling = !m_outbox.empty() || watch.deadline < earliest;
    }
    if (isCalling)
        m_thread.Wake();
}

/// That the value cannot be judged, or can again, is told to lists. It happens to every alarm of a
/// device whose connection blinks: the journal has the loss itself, from the driver.
void AlarmEngine::announceDoubt(const AlarmTracker &tracker)
{
    if (!tracker.isListed())
        return;
    BasicEvent shown = tracker.GetRecord();
    shown.type = TypeAlarmState;
    m_outbox.push_back({std::move(shown), false, true});
}

// Of an acknowledgement the journal keeps the deed, while lists are told how the alarm stands.
void AlarmEngine::send(const AlarmTracker &tracker, AlarmTracker::Records records)
{
    for (BasicEvent &record : records) {
        if (record.type != TypeAcknowledgement) {
            m_outbox.push_back({std::move(record), true, true});
            continue;
        }
        BasicEvent shown = tracker.GetRecord();
        shown.type = record.type;
        shown.user = record.user;
        m_outbox.push_back({std::move(record), true, false});
        m_outbox.push_back({std::move(shown), false, true});
    }
}

template <class Step> void AlarmEngine::step(Watch &watch, Step run)
{
    const AlarmMemory before = watch.tracker.GetMemory();
    run(watch.tracker);
    if (!(watch.tracker.GetMemory() == before))
        m_unsaved[watch.NodeId()] = {watch.tracker.GetMemory(), watch.tracker.GetSettings().source};
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
    std::vector<Outgoing> outgoing;
    AlarmStateStore::Memories unsaved;
    Timestamp next = DeadlineThread::Never;
    {
        const std::lock_guard lock(m_mutex);
        while (!m_deadlines.empty() && m_deadlines.begin()->first <= now.steady) {
            Watch &due = *m_deadlines.begin()->second;
            AlarmTracker::Records records;
            step(due, [&](AlarmTracker &tracker) { tracker.Tick(now, records); });
            send(due.tracker, std::move(records));
        }
        outgoing.swap(m_outbox);
        unsaved.swap(m_unsaved);
        if (!m_deadlines.empty())
            next = m_deadlines.begin()->first;
    }
    save(unsaved);
    for (const Outgoing &out : outgoing) {
        if (m_journal && out.isJournalled)
            (void)m_journal->Append(out.event);
        if (out.isAnnounced)
            m_announced(out.event);
    }
    return next;
}

void AlarmEngine::save(const AlarmStateStore::Memories &memories)
{
    if (memories.empty() || !m_store.IsOpen())
        return;
    const Result saved = m_store.Save(memories);
    if (!saved && !m_isSaveFailing)
        Report(LevelWarning, "Состояния тревог не сохраняются: " + saved.GetDetail());
    m_isSaveFailing = !saved;
    if (saved)
        return;
    // Tried again with the next change; later changes of the same alarms win over these.
    const std::lock_guard lock(m_mutex);
    m_unsaved.insert(memories.begin(), memories.end());
}

std::vector<BasicEvent> AlarmEngine::GetActive() const
{
    std::vector<BasicEvent> active;
    {
        const std::lock_guard lock(m_mutex);
        for (const auto &watch : m_watches) {
            if (watch->tracker.GetState() != AlarmState::Normal)
                active.push_back(watch->tracker.GetRecord());
        }
    }
    std::stable_sort(active.begin(), active.end(),
                     [](const BasicEvent &a, const BasicEvent &b) { return a.time > b.time; });
    return active;
}

std::vector<BasicEvent> AlarmEngine::GetActive(const ValueCell &cell) const
{
    std::vector<BasicEvent> active;
    const std::lock_guard lock(m_mutex);
    const auto watches = m_byCell.equal_range(&cell);
    for (auto watch = watches.first; watch != watches.second; ++watch) {
        if (watch->second->tracker.GetState() != AlarmState::Normal)
            active.push_back(watch->second->tracker.GetRecord());
    }
    return active;
}

Result AlarmEngine::Operate(const NodeLink &alarm, const Operation &operation)
{
    Result result;
    {
        const std::lock_guard lock(m_mutex);
        result = operate(alarm.GetNodeId(), operation);
    }
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
    send(found->second->tracker, std::move(records));
    return result;
}

void AlarmEngine::Report(EventLevel level, const std::string &text, const NodeLink &source,
                         const std::string &user, EventType type)
{
    if (!m_journal)
        return;
    BasicEvent event;
    event.level = level;
    event.type = type;
    event.text = text;
    event.source = source.isEmpty() ? "Тревоги" : source.GetLinkName(LinkNamePath);
    event.sourceNode = source;
    event.user = user;
    (void)m_journal->Append(std::move(event));
}

} // namespace Nodes
