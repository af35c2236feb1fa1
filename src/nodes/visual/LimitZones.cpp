#include "nodes/visual/LimitZones.h"

#include "nodes/alarms/alarmLimit.h"
#include "nodes/signals/BasicSignal.h"

#include <algorithm>

namespace Nodes {

LimitZones LimitZones::FromAlarms(const BasicSignal &signal)
{
    LimitZones zones;
    for (const auto &child : signal.Children()) {
        const auto *alarm = dynamic_cast<const alarmLimit *>(child.get());
        if (!alarm)
            continue;
        switch (alarm->GetLimitType()) {
        case alarmLimit::LowLow:
            zones.lowLow = std::max(zones.lowLow, alarm->GetLimit());
            break;
        case alarmLimit::Low:
            zones.low = std::max(zones.low, alarm->GetLimit());
            break;
        case alarmLimit::High:
            zones.high = std::min(zones.high, alarm->GetLimit());
            break;
        case alarmLimit::HighHigh:
            zones.highHigh = std::min(zones.highHigh, alarm->GetLimit());
            break;
        }
    }
    return zones;
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
