#include "widgets/elements/binding/AlarmWatch.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/signals/BasicSignal.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace Widgets {

namespace {

/// By signal. Elements live as long as the process may, so this does.
QMultiHash<unsigned long, AlarmWatch *> &watches()
{
    static QMultiHash<unsigned long, AlarmWatch *> bySignal;
    return bySignal;
}

unsigned long signalOf(const Nodes::BasicEvent &event)
{
    const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(event.sourceNode.GetNode());
    const Nodes::BasicSignal *watched = alarm ? alarm->GetSignal() : nullptr;
    return watched ? watched->GetId() : 0;
}

} // namespace

AlarmWatch::AlarmWatch(std::function<void()> onChanged) : m_onChanged(std::move(onChanged)) {}

AlarmWatch::~AlarmWatch()
{
    leave();
}

void AlarmWatch::leave()
{
    for (const unsigned long id : m_signals)
        watches().remove(id, this);
}

void AlarmWatch::setSignals(const std::vector<const Nodes::BasicSignal *> &watched)
{
    std::vector<unsigned long> ids;
    for (const Nodes::BasicSignal *each : watched) {
        if (each && std::find(ids.begin(), ids.end(), each->GetId()) == ids.end())
            ids.push_back(each->GetId());
    }
    if (ids == m_signals)
        return;
    leave();
    m_signals = std::move(ids);
    for (const unsigned long id : m_signals)
        watches().insert(id, this);
}

void AlarmWatch::tell(const std::vector<Nodes::BasicEvent> &alarms)
{
    if (watches().isEmpty())
        return;
    QHash<AlarmWatch *, unsigned long> concerned; // and one signal of theirs
    for (const Nodes::BasicEvent &alarm : alarms) {
        const unsigned long id = signalOf(alarm);
        for (auto watch = watches().constFind(id);
             watch != watches().constEnd() && watch.key() == id; ++watch)
            concerned.insert(watch.value(), id);
    }
    // One of them may destroy another.
    for (auto each = concerned.constBegin(); each != concerned.constEnd(); ++each) {
        if (watches().contains(each.value(), each.key()))
            each.key()->m_onChanged();
    }
}

} // namespace Widgets
