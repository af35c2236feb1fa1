#include "nodes/alarms/statistics/AlarmStatistics.h"

#include "nodes/events/BasicEvent.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::size_t topTen = 10;

bool concernsAlarm(const BasicEvent &entry)
{
    switch (entry.type) {
    case TypeAlarmActive:
    case TypeAlarmReturned:
    case TypeAcknowledgement:
        return entry.occurrence != 0 && entry.alarmState != AlarmState::None;
    case TypeAlarmState:
        return entry.alarmState != AlarmState::None;
    default:
        return false;
    }
}

bool isUp(AlarmState state)
{
    return state == AlarmState::ActiveUnacked || state == AlarmState::ActiveAcked;
}

bool waits(AlarmState state)
{
    return state == AlarmState::ActiveUnacked || state == AlarmState::ReturnedUnacked;
}

bool isHiding(AlarmState state)
{
    return state == AlarmState::Shelved || state == AlarmState::Suppressed ||
           state == AlarmState::OutOfService;
}

} // namespace

AlarmStatistics::AlarmStatistics(const Settings &settings)
    : m_settings(settings), m_floods(settings.floods)
{
    m_figures.begin = settings.begin;
    m_figures.end = settings.end;
    const Timestamp span = std::max<Timestamp>(settings.end - settings.begin, 0);
    m_figures.perBin.resize(std::size_t((span + AlarmFigures::Bin - 1) / AlarmFigures::Bin));
    m_figures.floodAbove = settings.floods.above;
    m_figures.floodBelow = settings.floods.below;
    prepareShifts();
}

void AlarmStatistics::prepareShifts()
{
    for (AlarmShift shift : m_settings.shifts) {
        shift.begin = std::max(shift.begin, m_settings.begin);
        shift.end = std::min(shift.end, m_settings.end);
        shift.raised = 0;
        if (shift.begin < shift.end)
            m_figures.shifts.push_back(std::move(shift));
    }
}

void AlarmStatistics::countShift(Timestamp at)
{
    auto &shifts = m_figures.shifts;
    const auto next = std::upper_bound(
        shifts.begin(), shifts.end(), at,
        [](Timestamp time, const AlarmShift &shift) { return time < shift.begin; });
    if (next != shifts.begin() && at < std::prev(next)->end)
        ++std::prev(next)->raised;
}

void AlarmStatistics::Seed(const BasicEvent &alarm)
{
    const Timestamp from = m_settings.from != 0 ? m_settings.from : m_settings.begin;
    if (alarm.sourceNode.isEmpty() || !isUp(alarm.alarmState) || alarm.raised == 0 ||
        alarm.raised >= from)
        return;
    Track &track = m_tracks[alarm.sourceNode.GetNodeId()];
    track.count.alarm = alarm.sourceNode;
    track.count.source = alarm.source;
    track.count.text = alarm.text;
    track.count.priority = alarm.priority;
    track.occurrence = alarm.occurrence;
    track.shown = alarm.raised;
    track.isActive = true;
    // Acknowledged after the first entry: that entry is still to come.
    track.isWaiting =
        alarm.acknowledged == 0 ? waits(alarm.alarmState) : alarm.acknowledged >= from;
    track.isAcked = !track.isWaiting;
}

void AlarmStatistics::Add(const BasicEvent &entry)
{
    if (!concernsAlarm(entry) || entry.time <= 0 || entry.time >= m_settings.end)
        return;
    if (entry.sourceNode.isEmpty()) {
        m_figures.foreign += isInPeriod(entry.time) ? 1 : 0;
        return;
    }
    m_latest = std::max(m_latest, entry.time);
    Track &track = m_tracks[entry.sourceNode.GetNodeId()];
    if (entry.type != TypeAcknowledgement) {
        track.count.alarm = entry.sourceNode;
        track.count.source = entry.source;
        if (entry.type == TypeAlarmActive || track.count.text.empty()) // others tell a deed as well
            track.count.text = entry.text;
    }
    if (entry.priority != 0)
        track.count.priority = entry.priority;
    follow(track, entry, m_latest);
}

void AlarmStatistics::follow(Track &track, const BasicEvent &entry, Timestamp at)
{
    if (entry.type == TypeAcknowledgement) {
        acknowledge(track, entry, at);
        return;
    }
    if (entry.type == TypeAlarmReturned) {
        clear(track, entry, at);
        return;
    }
    if (isHiding(entry.alarmState)) {
        hide(track);
        return;
    }
    track.isHidden = false;
    if (isUp(entry.alarmState))
        show(track, entry, at);
    else
        track.isActive = false; // it went while it was hidden, nobody knows when
}

/// Raised, or back from the shelf. With a clock that was set back the entries of an occurrence come
/// out of order, while the numbers of occurrences only grow.
void AlarmStatistics::show(Track &track, const BasicEvent &entry, Timestamp at)
{
    if (entry.occurrence == track.occurrence) {
        track.isActive = entry.occurrence > track.returned;
        return;
    }
    if (entry.occurrence < track.occurrence) {
        if (entry.type == TypeAlarmActive)
            count(track, entry, at);
        return;
    }
    if (track.isWaiting && track.isCounted)
        ++m_figures.unacknowledged;
    track.occurrence = entry.occurrence;
    track.shown = at;
    track.isActive = true;
    track.isWaiting = waits(entry.alarmState);
    track.isAcked = false;
    track.isCounted = isInPeriod(at);
    count(track, entry, at);
}

void AlarmStatistics::count(Track &track, const BasicEvent &entry, Timestamp at)
{
    const bool isChattering = track.recent[1] != 0 && at - track.recent[1] < Minute;
    track.recent = {at, track.recent[0]};
    if (const auto flood = m_floods.Add(at))
        noteFlood(*flood);
    if (!isInPeriod(at))
        return;
    ++m_figures.raised;
    countShift(at);
    ++m_figures.perBin[std::size_t((at - m_settings.begin) / AlarmFigures::Bin)];
    if (entry.priority >= 1 && entry.priority <= AlarmFigures::Priorities)
        ++m_figures.perPriority[std::size_t(entry.priority - 1)];
    ++track.count.raised;
    track.count.lastRaised = at;
    track.count.chattering += isChattering ? 1 : 0;
}

void AlarmStatistics::noteFlood(const FloodMeter::Flood &flood)
{
    const Timestamp begin = std::max(flood.begin, m_settings.begin);
    const Timestamp duration = std::min(flood.end, m_settings.end) - begin;
    if (duration <= 0)
        return;
    m_figures.flood += duration;
    m_figures.longestFlood = std::max(m_figures.longestFlood, duration);
    m_figures.floods += isInPeriod(flood.begin) ? 1 : 0;
}

/// An occurrence whose raising was not read. Its number counts from the milliseconds of its
/// raising, so that it tells the time unless the clock was wrong.
void AlarmStatistics::adopt(Track &track, const BasicEvent &entry, Timestamp at)
{
    if (track.isWaiting && track.isCounted)
        ++m_figures.unacknowledged;
    track.occurrence = entry.occurrence;
    const Timestamp raised = Timestamp(entry.occurrence) * 1000;
    const Timestamp read = m_settings.from != 0 ? m_settings.from : m_settings.begin;
    track.shown = raised < std::min(at, read) ? raised : 0;
    track.isActive = true;
    track.isWaiting = true;
    track.isAcked = false;
    track.isCounted = false;
}

void AlarmStatistics::clear(Track &track, const BasicEvent &entry, Timestamp at)
{
    if (entry.occurrence > track.occurrence)
        adopt(track, entry, at);
    track.returned = std::max(track.returned, entry.occurrence);
    if (entry.occurrence != track.occurrence || !track.isActive)
        return;
    track.isActive = false;
    track.isWaiting = entry.alarmState == AlarmState::ReturnedUnacked;
    if (track.shown == 0 || !isInPeriod(at))
        return;
    const Timestamp duration = at - track.shown;
    noteStanding(track.count, duration);
    if (duration < m_settings.fleeting && !track.isAcked)
        ++track.count.fleeting;
}

// What nobody is shown does not stand; afterwards its time begins anew only with a new occurrence.
void AlarmStatistics::hide(Track &track)
{
    track.isHidden = true;
}

void AlarmStatistics::acknowledge(Track &track, const BasicEvent &entry, Timestamp at)
{
    if (entry.occurrence > track.occurrence)
        adopt(track, entry, at);
    if (entry.occurrence != track.occurrence || !track.isWaiting)
        return;
    track.isWaiting = false;
    track.isAcked = true;
    if (track.shown != 0 && isInPeriod(at))
        m_latencies.Add(at - track.shown);
}

void AlarmStatistics::noteStanding(AlarmCount &count, Timestamp duration) const
{
    if (duration > m_settings.standing)
        count.longestStanding = std::max(count.longestStanding, duration);
}

AlarmFigures AlarmStatistics::GetFigures() const
{
    AlarmStatistics ended(*this); // a flood that goes on ends with the period here
    if (auto flood = ended.m_floods.Advance(m_settings.end))
        ended.noteFlood(*flood);
    else if (ended.m_floods.IsFlood())
        ended.noteFlood({ended.m_floods.GetSince(), m_settings.end});
    AlarmFigures figures = std::move(ended.m_figures);
    const double span = double(std::max<Timestamp>(m_settings.end - m_settings.begin, 1));
    figures.meanPerBin = double(figures.raised) * double(AlarmFigures::Bin) / span;
    figures.floodShare = double(figures.flood) / span;
    const auto most = std::max_element(figures.perBin.begin(), figures.perBin.end());
    if (most != figures.perBin.end() && *most > 0) {
        figures.mostPerBin = *most;
        figures.mostAt = figures.begin + (most - figures.perBin.begin()) * AlarmFigures::Bin;
    }
    figures.acknowledged = m_latencies.Count();
    figures.acknowledgeMean = m_latencies.Mean();
    figures.acknowledgeMedian = m_latencies.Quantile(0.5);
    figures.acknowledgeMost = m_latencies.Quantile(0.95);
    finishAlarms(figures);
    return figures;
}

AlarmCount AlarmStatistics::finish(const Track &track, AlarmFigures &figures) const
{
    AlarmCount count = track.count;
    if (track.isWaiting && track.isCounted)
        ++figures.unacknowledged;
    if (track.isActive && !track.isHidden) {
        ++figures.activeAtEnd;
        const Timestamp duration = track.shown != 0 ? m_settings.end - track.shown : 0;
        count.isStanding = duration > m_settings.standing;
        noteStanding(count, duration);
    }
    figures.chatteringAlarms += count.chattering > 0 ? 1 : 0;
    figures.fleetingAlarms += count.fleeting > 0 ? 1 : 0;
    figures.standingAlarms += count.longestStanding > 0 ? 1 : 0;
    return count;
}

void AlarmStatistics::finishAlarms(AlarmFigures &figures) const
{
    for (const auto &[node, track] : m_tracks) {
        AlarmCount count = finish(track, figures);
        if (count.raised > 0 || count.longestStanding > 0)
            figures.alarms.push_back(std::move(count));
    }
    std::sort(figures.alarms.begin(), figures.alarms.end(),
              [](const AlarmCount &a, const AlarmCount &b) {
                  return a.raised != b.raised ? a.raised > b.raised : a.source < b.source;
              });
    std::uint64_t top = 0;
    for (std::size_t i = 0; i < std::min(topTen, figures.alarms.size()); ++i)
        top += figures.alarms[i].raised;
    figures.topTenShare = figures.raised > 0 ? double(top) / double(figures.raised) : 0;
}

} // namespace Nodes
