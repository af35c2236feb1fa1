#include "nodes/alarms/engine/WatchedAlarms.h"

#include "nodes/alarms/engine/AlarmTuningRules.h"
#include "nodes/alarms/engine/FirstUpGroup.h"
#include "nodes/values/ValueCell.h"

#include <algorithm>

namespace Nodes {

namespace {

const char *limitName(int rank)
{
    switch (rank) {
    case 2:
        return "HH";
    case 1:
        return "H";
    case -1:
        return "L";
    default:
        return "LL";
    }
}

} // namespace

WatchedAlarm::WatchedAlarm(AlarmInputs alarm, std::size_t number, unsigned long &lastOccurrence)
    : tracker(alarm.settings, lastOccurrence), inputs(std::move(alarm)), place(number)
{
}

void WatchedAlarm::JudgeValue(const AlarmMoment &now, AlarmTracker::Records &records)
{
    tracker.Judge(inputs.cell->Measured(), now, records);
}

void WatchedAlarm::JudgeReference(const AlarmMoment &now, AlarmTracker::Records &records)
{
    tracker.JudgeReference(inputs.reference->Measured(), now, records);
}

void WatchedAlarm::JudgeSuppressor(const AlarmMoment &now, AlarmTracker::Records &records)
{
    const SignalValue latest = inputs.suppressor->Measured();
    if (latest.IsEmpty())
        return;
    const Quality quality = latest.GetQuality();
    const bool isTrusted = quality != Quality::Bad && quality != Quality::Stale;
    tracker.SuppressByDesign(isTrusted && latest.ToBool() != inputs.isSuppressorInverted, now,
                             records);
}

void WatchedAlarms::Add(const AlarmInputs &alarm, unsigned long &lastOccurrence)
{
    m_alarms.push_back(std::make_unique<WatchedAlarm>(alarm, m_alarms.size(), lastOccurrence));
    WatchedAlarm &added = *m_alarms.back();
    m_byNode[added.NodeId()] = &added;
    m_byCell.emplace(alarm.cell.get(), &added);
    const std::string &name = alarm.settings.firstUpGroup;
    if (name.empty())
        return;
    auto &group = m_groups[name];
    if (!group)
        group = std::make_shared<FirstUpGroup>();
    added.tracker.Join(group);
}

void WatchedAlarms::Clear()
{
    m_byNode.clear();
    m_byCell.clear();
    m_groups.clear();
    m_alarms.clear();
}

WatchedAlarm *WatchedAlarms::Find(unsigned long node) const
{
    const auto found = m_byNode.find(node);
    return found == m_byNode.end() ? nullptr : found->second;
}

std::vector<const WatchedAlarm *> WatchedAlarms::ActiveByChange() const
{
    std::vector<const WatchedAlarm *> active;
    for (const auto &alarm : m_alarms) {
        if (alarm->tracker.GetState() != AlarmState::Normal)
            active.push_back(alarm.get());
    }
    std::stable_sort(active.begin(), active.end(),
                     [](const WatchedAlarm *a, const WatchedAlarm *b) {
                         return a->tracker.GetMemory().changed > b->tracker.GetMemory().changed;
                     });
    return active;
}

std::vector<BasicEvent> WatchedAlarms::Active() const
{
    std::vector<BasicEvent> active;
    const std::vector<const WatchedAlarm *> alarms = ActiveByChange();
    active.reserve(alarms.size());
    for (const WatchedAlarm *alarm : alarms)
        active.push_back(alarm->tracker.GetRecord());
    return active;
}

std::vector<BasicEvent> WatchedAlarms::ActiveOf(const ValueCell &cell) const
{
    std::vector<BasicEvent> active;
    for (auto [alarm, end] = m_byCell.equal_range(&cell); alarm != end; ++alarm) {
        if (alarm->second->tracker.GetState() != AlarmState::Normal)
            active.push_back(alarm->second->tracker.GetRecord());
    }
    return active;
}

std::vector<BasicEvent> WatchedAlarms::Hidden() const
{
    std::vector<BasicEvent> hidden;
    for (const WatchedAlarm *alarm : ActiveByChange()) {
        if (alarm->tracker.GetMemory().isHidden())
            hidden.push_back(alarm->tracker.GetRecord());
    }
    return hidden;
}

std::vector<TunedAlarm> WatchedAlarms::Tuned() const
{
    std::vector<TunedAlarm> tuned;
    for (const auto &alarm : m_alarms) {
        const AlarmDeeds &deeds = alarm->tracker.GetMemory().Deeds();
        if (!deeds.tuning.isEmpty())
            tuned.push_back({alarm->tracker.GetSettings().node, deeds.tuning, deeds.project,
                             deeds.tunedBy, deeds.tunedAt});
    }
    return tuned;
}

AlarmTuning WatchedAlarms::TuningOf(unsigned long node) const
{
    const WatchedAlarm *alarm = Find(node);
    return alarm ? alarm->tracker.GetTuning() : AlarmTuning();
}

Result WatchedAlarms::CheckOrder(unsigned long node, const AlarmTuning &wanted) const
{
    const WatchedAlarm *alarm = Find(node);
    const int rank = alarm ? alarm->tracker.GetSettings().limitRank : 0;
    if (rank == 0 || !wanted.limit)
        return Result();
    const double limit = *wanted.limit;
    for (auto [other, end] = m_byCell.equal_range(alarm->inputs.cell.get()); other != end;
         ++other) {
        const AlarmTracker &neighbour = other->second->tracker;
        const int its = neighbour.GetSettings().limitRank;
        if (its == 0 || its == rank)
            continue;
        const double bound = *neighbour.GetTuning().limit;
        if (its > rank ? limit < bound : limit > bound)
            continue;
        const auto text = [&](double number) {
            return AlarmTuningRules::LimitText(alarm->tracker.GetSettings(), number);
        };
        return Result(Result::OutOfRange, std::string("Предел ") + limitName(rank) + " " +
                                              text(limit) + " должен быть " +
                                              (its > rank ? "ниже" : "выше") + " предела " +
                                              limitName(its) + " (" + text(bound) + ")");
    }
    return Result();
}

} // namespace Nodes
