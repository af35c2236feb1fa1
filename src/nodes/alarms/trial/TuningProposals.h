#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/AlarmTuning.h"

#include <vector>

namespace Nodes {

/// Settings worth trying for an alarm that troubles operators: as it is, then a longer on delay, a
/// longer off delay, a wider deadband, and both latter together. `span` is the range of the signal;
/// not above 0: unknown. Those that the alarm does not have are left out.
NODES_EXPORT std::vector<AlarmTuning> ProposeTunings(const AlarmTuning &now, double span);

/// Those numbers of `wanted` that are not as they are now: what is not spoken of stays, also where
/// it has been changed elsewhere meanwhile.
NODES_EXPORT AlarmTuning ChangesOf(const AlarmTuning &now, const AlarmTuning &wanted);

} // namespace Nodes
