#pragma once

#include <cstddef>

namespace Nodes {

class AlarmTracker;

/// Alarms that tend to come together: the first of a quiet group is marked until none of the group
/// is on the operators' lists. Shared by their trackers, guarded with them.
struct FirstUpGroup
{
    std::size_t listed = 0;              ///< alarms of the group on the lists
    const AlarmTracker *first = nullptr; ///< null: quiet
};

} // namespace Nodes
