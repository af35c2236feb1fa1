#pragma once

#include "nodes/values/Quality.h"
#include "nodes/values/Timestamp.h"

namespace Nodes {

/// Aggregate of a signal's samples within [begin, end). Numbers are those of samples that are no
/// gap; NaN where there is none.
struct IntervalSample
{
    Timestamp begin = 0;
    Timestamp end = 0;
    double minimum = 0;
    double maximum = 0;
    double first = 0; ///< of the first sample; NaN if that is a gap, so that no line leads to it
    double last = 0;  ///< of the last sample, likewise
    unsigned long count = 0;       ///< samples, gaps included
    Quality worst = Quality::Good; ///< of all; Bad before Stale before Uncertain
};

} // namespace Nodes
