#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/statistics/AlarmFigures.h"

#include <vector>

namespace Nodes {

class ShiftPlan;

/// The shifts that touch those times, whole, in their order, for statistics to count into. Any
/// thread.
NODES_EXPORT std::vector<AlarmShift> AlarmShiftsOf(const ShiftPlan &plan, Timestamp begin,
                                                   Timestamp end);

} // namespace Nodes
