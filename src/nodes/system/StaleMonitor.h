#pragma once

#include "nodes/NodesExport.h"
#include "nodes/timers/DeadlineThread.h"

#include <memory>
#include <vector>

namespace Nodes {

class ValueCell;

/// Thread that turns values stale for which no update came within their maximum age. Looks at each
/// cell about once in its age, not at every tick; a value turns stale at most 0.1 s late. A value
/// that never came or is bad stays what it is. Start, Stop: one thread.
class NODES_EXPORT StaleMonitor
{
public:
    struct Entry
    {
        std::shared_ptr<ValueCell> cell;
        int staleAfter = 0; ///< ms; cells with 0 or less are not watched
    };

    StaleMonitor();
    ~StaleMonitor();
    StaleMonitor(const StaleMonitor &) = delete;
    StaleMonitor &operator=(const StaleMonitor &) = delete;

    /// Replaces what is watched. Without entries there is no thread.
    void Start(const std::vector<Entry> &entries);
    void Stop();

private:
    class Schedule;

    std::unique_ptr<Schedule> m_schedule; // used by the thread while it runs
    DeadlineThread m_thread;
};

} // namespace Nodes
