#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <vector>

namespace Nodes {

struct AlarmFigures;

/// How a measure compares with what ISA-18.2 and EEMUA 191 recommend.
enum class HealthVerdict {
    None,      ///< there is no recommendation, or too little happened to tell
    Good,      ///< as recommended
    Attention, ///< to be worked at
    Bad        ///< operators are overloaded
};

/// One figure of the health of an alarm system, for operators and reports.
struct NODES_EXPORT AlarmMeasure
{
    enum Unit { Count, Share, Seconds };

    std::string name; ///< Russian
    double value = 0; ///< of a share 0 to 1
    Unit unit = Count;
    int decimals = 0;
    std::string target; ///< Russian; "" when there is none
    HealthVerdict verdict = HealthVerdict::None;
    bool isKnown = true; ///< false: nothing happened that it could be told of
};

/// Whether the period is long enough, an hour, to call anything in it good.
NODES_EXPORT bool IsTelling(const AlarmFigures &figures);
/// The measures in the order in which they are shown.
NODES_EXPORT std::vector<AlarmMeasure> MeasuresOf(const AlarmFigures &figures);
/// Shares of low (priorities 3 and 4), medium (2) and high (1) priority, 0 to 1; all 0 without
/// alarms.
NODES_EXPORT std::vector<double> PrioritySharesOf(const AlarmFigures &figures);
/// What is recommended for them: 80, 15 and 5 %.
NODES_EXPORT const std::vector<double> &RecommendedPriorityShares();
/// The gravest verdict of all.
NODES_EXPORT HealthVerdict OverallOf(const std::vector<AlarmMeasure> &measures);

} // namespace Nodes
