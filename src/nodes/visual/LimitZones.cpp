#include "nodes/visual/LimitZones.h"

#include "nodes/alarms/alarmLimit.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <algorithm>
#include <vector>

namespace Nodes {

namespace {

template <class Visit> void visitAlarms(const ConfigNode &node, const Visit &visit)
{
    for (const auto &child : node.Children()) {
        const bool isAlarm = child->GetNodeType().GetFamily() == NodeType::TypeAlarm;
        if (const auto *alarm = isAlarm ? dynamic_cast<const alarmLimit *>(child.get()) : nullptr)
            visit(*alarm);
        visitAlarms(*child, visit);
    }
}

/// Gathered once for each state of the tree: a page of gauges would walk a large project for each
/// of them.
const std::vector<const alarmLimit *> &alarmsOf(const NodesCollection &project)
{
    struct Gathered
    {
        unsigned long project = 0;
        unsigned long revision = 0;
        std::vector<const alarmLimit *> alarms;
    };
    static Gathered gathered;
    if (gathered.project != project.GetToken() || gathered.revision != project.GetRevision()) {
        gathered = {project.GetToken(), project.GetRevision(), {}};
        if (project.GetRoot())
            visitAlarms(*project.GetRoot(),
                        [](const alarmLimit &alarm) { gathered.alarms.push_back(&alarm); });
    }
    return gathered.alarms;
}

} // namespace

LimitZones LimitZones::FromAlarms(const BasicSignal &signal)
{
    const NodesCollection *project = signal.GetNodesCollection();
    if (!project)
        return FromOwnAlarms(signal);
    const systemCore *core = signal.GetCore();
    const systemAlarming *alarming = core ? core->GetSystemAlarming() : nullptr;
    LimitZones zones;
    for (const alarmLimit *alarm : alarmsOf(*project)) {
        if (alarm->GetSignal() != &signal)
            continue;
        const AlarmTuning tuned = alarming ? alarming->GetTuning(alarm) : AlarmTuning();
        zones.add(*alarm, tuned.limit.value_or(alarm->GetLimit()));
    }
    return zones;
}

LimitZones LimitZones::FromOwnAlarms(const BasicSignal &signal)
{
    LimitZones zones;
    visitAlarms(signal, [&](const alarmLimit &alarm) {
        if (alarm.GetSignal() == &signal)
            zones.add(alarm, alarm.GetLimit());
    });
    return zones;
}

void LimitZones::add(const alarmLimit &alarm, double limit)
{
    switch (alarm.GetLimitType()) {
    case alarmLimit::LowLow:
        lowLow = std::max(lowLow, limit);
        break;
    case alarmLimit::Low:
        low = std::max(low, limit);
        break;
    case alarmLimit::High:
        high = std::min(high, limit);
        break;
    case alarmLimit::HighHigh:
        highHigh = std::min(highHigh, limit);
        break;
    }
}

LimitZones::enZone LimitZones::GetZone(double value) const
{
    if (value >= highHigh)
        return ZoneHighHigh;
    if (value <= lowLow)
        return ZoneLowLow;
    if (value >= high)
        return ZoneHigh;
    return value <= low ? ZoneLow : ZoneNormal;
}

const char *LimitZones::GetToken(enZone zone)
{
    switch (zone) {
    case ZoneLowLow:
        return "LL";
    case ZoneLow:
        return "L";
    case ZoneHigh:
        return "H";
    case ZoneHighHigh:
        return "HH";
    case ZoneNormal:
        break;
    }
    return "";
}

} // namespace Nodes
