#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/health/BarsChart.h"

#include "nodes/alarms/statistics/AlarmFigures.h"

namespace Widgets {

/// Shares of the priorities beside those that are recommended; none without alarms.
WIDGETS_EXPORT std::vector<BarsChart::Bar> PriorityBars(const Nodes::AlarmFigures &figures);
/// The ten alarms that were raised most often; one that chatters is told by a word too.
WIDGETS_EXPORT std::vector<BarsChart::Bar> TopTenBars(const Nodes::AlarmFigures &figures);

/// The ten areas with the most alarms.
WIDGETS_EXPORT std::vector<BarsChart::Bar> AreaBars(const Nodes::AlarmFigures &figures);
/// Shifts of one name together, in the order in which they first begin.
WIDGETS_EXPORT std::vector<BarsChart::Bar> ShiftBars(const Nodes::AlarmFigures &figures);

} // namespace Widgets
