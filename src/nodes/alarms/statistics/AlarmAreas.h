#pragma once

#include "nodes/NodesExport.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Nodes {

struct AlarmFigures;

/// The alarms of all signals of one folder or group of a source, in a period.
struct AlarmArea
{
    std::string name; ///< its path; "" for alarms whose signals stand in none
    std::uint64_t raised = 0;
    std::size_t alarms = 0; ///< different ones
    std::size_t chattering = 0;
    std::size_t fleeting = 0;
    std::size_t standing = 0;
};

/// The area with the most alarms first, equal ones by name. Any thread.
NODES_EXPORT std::vector<AlarmArea> AlarmAreasOf(const AlarmFigures &figures);

} // namespace Nodes
