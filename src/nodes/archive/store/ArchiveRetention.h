#pragma once

#include "nodes/archive/store/ArchiveSignalKey.h"
#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <map>

namespace Nodes {

/// How long samples of one signal are kept. The oldest go first, some thousand at a time: what is
/// newer than the limits is never taken.
struct ArchiveRetention
{
    Timestamp maximumAge = 0;       ///< microseconds; 0: whatever their age
    std::uint64_t maximumBytes = 0; ///< of the signal's packed samples; 0: whatever their size

    bool isNeeded() const { return maximumAge > 0 || maximumBytes > 0; }
};

struct ArchiveRetentionRules
{
    ArchiveRetention others; ///< of signals that have no rule of their own, deleted ones among them
    std::map<ArchiveSignalKey, ArchiveRetention> bySignal;
    /// Of everything that is packed; 0: whatever its size. The oldest samples of all go first.
    std::uint64_t maximumBytes = 0;

    bool IsNeeded() const { return maximumBytes > 0 || others.isNeeded() || !bySignal.empty(); }
};

} // namespace Nodes
