#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

namespace Nodes {

/// When something periodic is due, in steady microseconds. The due times lie on a fixed grid, so
/// late work does not shift later work; slots that have passed entirely are left out.
class NODES_EXPORT PollSchedule
{
public:
    /// First due at `start`. A period below one millisecond counts as one.
    PollSchedule(Timestamp period, Timestamp start);

    bool IsDue(Timestamp now) const { return now >= m_next; }
    Timestamp GetNext() const { return m_next; }
    /// Moves to the first slot after `now`.
    void Advance(Timestamp now);
    /// Makes it due at `start` and lays the grid from there.
    void Restart(Timestamp start) { m_next = start; }

private:
    Timestamp m_period;
    Timestamp m_next;
};

} // namespace Nodes
