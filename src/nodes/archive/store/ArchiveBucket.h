#pragma once

#include "nodes/values/IntervalSample.h"

namespace Nodes {

/// Aggregate of the samples within [begin, end), as an IntervalSample, and their mean: the
/// arithmetic one of the samples that are no gap, NaN where there is none. Without any sample the
/// numbers are NaN, the count is 0 and the quality bad.
struct ArchiveBucket
{
    IntervalSample interval;
    double mean = 0;
};

} // namespace Nodes
