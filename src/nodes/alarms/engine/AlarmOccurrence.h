#pragma once

#include "nodes/model/links/NodeLink.h"

#include <vector>

namespace Nodes {

/// One occurrence of one alarm, as a record named it (BasicEvent::sourceNode, occurrence).
struct AlarmOccurrence
{
    NodeLink alarm;
    unsigned long occurrence = 0;
};

using AlarmOccurrences = std::vector<AlarmOccurrence>;

} // namespace Nodes
