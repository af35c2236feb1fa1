#pragma once

#include "nodes/NodesExport.h"

#include <limits>

namespace Nodes {

class BasicSignal;
class alarmLimit;

/// Where a number stands between warning and alarm limits. A limit at infinity is none.
struct NODES_EXPORT LimitZones
{
    enum enZone { ZoneLowLow = -2, ZoneLow = -1, ZoneNormal = 0, ZoneHigh = 1, ZoneHighHigh = 2 };

    double lowLow = -std::numeric_limits<double>::infinity();
    double low = -std::numeric_limits<double>::infinity();
    double high = std::numeric_limits<double>::infinity();
    double highHigh = std::numeric_limits<double>::infinity();

    /// Those of the limit alarms that watch the signal; of several alike the strictest. GUI
    /// thread.
    static LimitZones FromAlarms(const BasicSignal &signal);
    /// Only of those that stand below the signal: cheap enough for every value.
    static LimitZones FromOwnAlarms(const BasicSignal &signal);

    /// A value that reaches a limit is in its zone; the outer zone wins. NaN is in none.
    enZone GetZone(double value) const;
    /// The zone's usual sign: "LL", "L", "", "H", "HH".
    static const char *GetToken(enZone zone);
    /// LL and HH are alarms, L and H warnings.
    static bool isAlarm(enZone zone) { return zone == ZoneLowLow || zone == ZoneHighHigh; }

private:
    void add(const alarmLimit &alarm, double limit);
};

} // namespace Nodes
