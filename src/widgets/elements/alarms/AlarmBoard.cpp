#include "widgets/elements/alarms/AlarmBoard.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/signals/BasicSignal.h"

namespace Widgets {

using Nodes::AlarmState;

namespace {

unsigned long signalOf(const Nodes::BasicEvent &event)
{
    const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(event.sourceNode.GetNode());
    const Nodes::BasicSignal *watched = alarm ? alarm->GetSignal() : nullptr;
    return watched ? watched->GetId() : 0;
}

} // namespace

AlarmBoard &AlarmBoard::instance()
{
    static AlarmBoard board;
    return board;
}

void AlarmBoard::take(const std::vector<Nodes::BasicEvent> &alarms)
{
    QSet<unsigned long> touched;
    for (const Nodes::BasicEvent &alarm : alarms) {
        const unsigned long id = alarm.sourceNode.GetNodeId();
        const bool isOver =
            alarm.alarmState == AlarmState::Normal || alarm.alarmState == AlarmState::None;
        const auto known = m_alarms.find(id);
        if (isOver) {
            remove(id, touched);
        } else if (known != m_alarms.end()) {
            *known = alarm;
            touched.insert(m_signalOf.value(id));
        } else {
            const unsigned long signal = signalOf(alarm);
            m_alarms.insert(id, alarm);
            m_signalOf.insert(id, signal);
            m_ofSignal[signal].append(id);
            touched.insert(signal);
        }
    }
    if (!touched.isEmpty())
        emit changed(touched);
    emit taken(alarms);
}

void AlarmBoard::remove(unsigned long alarm, QSet<unsigned long> &touched)
{
    if (m_alarms.remove(alarm) == 0)
        return;
    const unsigned long signal = m_signalOf.take(alarm);
    const auto of = m_ofSignal.find(signal);
    of->removeOne(alarm);
    if (of->isEmpty())
        m_ofSignal.erase(of);
    touched.insert(signal);
}

void AlarmBoard::forget(const QSet<unsigned long> &alarms)
{
    std::vector<Nodes::BasicEvent> over;
    for (const unsigned long alarm : alarms) {
        const auto known = m_alarms.constFind(alarm);
        if (known == m_alarms.constEnd())
            continue;
        over.push_back(*known);
        over.back().alarmState = AlarmState::Normal;
    }
    if (!over.empty())
        take(over);
}

void AlarmBoard::clear()
{
    const QList<unsigned long> all = m_alarms.keys();
    forget({all.begin(), all.end()});
    setMuted(false);
    setFilter({});
}

AlarmSummary AlarmBoard::of(unsigned long signal) const
{
    AlarmSummary summary;
    for (const unsigned long alarm : m_ofSignal.value(signal))
        summary.add(*m_alarms.constFind(alarm));
    return summary;
}

void AlarmBoard::setMuted(bool isMuted)
{
    if (m_isMuted == isMuted)
        return;
    m_isMuted = isMuted;
    emit viewChanged();
}

void AlarmBoard::setFilter(const QString &filter)
{
    if (m_filter == filter)
        return;
    m_filter = filter;
    emit viewChanged();
}

} // namespace Widgets
