#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

namespace Nodes {

/// Source of "now" for everything in the node model that stamps, ages or delays.
/// Tests install their own; the installed clock must outlive its users. Safe on any thread.
class NODES_EXPORT Clock
{
public:
    virtual ~Clock() = default;

    /// Wall time in microseconds since the epoch.
    virtual Timestamp Now() const = 0;
    /// Monotonic time in microseconds from an arbitrary origin, for ages and delays.
    virtual Timestamp Steady() const = 0;

    static const Clock &Current();
    /// Replaces the process-wide clock; null restores the system clock.
    static void Install(const Clock *clock);
};

} // namespace Nodes
