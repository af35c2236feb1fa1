#pragma once

#include "nodes/values/Timestamp.h"

namespace Nodes {

/// Aggregate of a signal over [begin, end): what an archive answers for wide spans.
struct IntervalSample
{
    Timestamp begin = 0;
    Timestamp end = 0;
    double minimum = 0;
    double maximum = 0;
    double average = 0;
    unsigned long count = 0; ///< raw samples aggregated
};

} // namespace Nodes
