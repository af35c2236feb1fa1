#include "nodes/visual/LimitZones.h"

#include "nodes/alarms/alarmLimit.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"

#include <algorithm>

namespace Nodes {

LimitZones LimitZones::FromAlarms(const BasicSignal &signal)
{
    LimitZones zones;
    const NodesCollection *project = signal.GetNodesCollection();
    const ConfigNode *root = project ? project->GetRoot() : nullptr;
    zones.addBelow(root ? *root : signal, signal);
    return zones;
}

LimitZones LimitZones::FromOwnAlarms(const BasicSignal &signal)
{
    LimitZones zones;
    zones.addBelow(signal, signal);
    return zones;
}

void LimitZones::addBelow(const ConfigNode &node, const BasicSignal &signal)
{
    for (const auto &child : node.Children()) {
        const bool isAlarm = child->GetNodeType().GetFamily() == NodeType::TypeAlarm;
        const auto *alarm = isAlarm ? dynamic_cast<const alarmLimit *>(child.get()) : nullptr;
        if (alarm && alarm->GetSignal() == &signal)
            add(*alarm);
        addBelow(*child, signal);
    }
}

void LimitZones::add(const alarmLimit &alarm)
{
    const double limit = alarm.GetLimit();
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
