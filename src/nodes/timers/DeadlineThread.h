#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace Nodes {

/// A thread that does what is due and sleeps until the next deadline of the installed Clock.
/// Start, Stop: one thread, not the own one. Wake: any thread.
class NODES_EXPORT DeadlineThread
{
public:
    /// Does what is due and returns the steady time at which to be called again; Never waits for
    /// Wake. Called at least once a second, so that jumps of the wall clock are noticed.
    using Work = std::function<Timestamp()>;
    static constexpr Timestamp Never = INT64_MAX;

    DeadlineThread();
    ~DeadlineThread();
    DeadlineThread(const DeadlineThread &) = delete;
    DeadlineThread &operator=(const DeadlineThread &) = delete;

    void Start(Work work);
    /// Waits for work that is under way; none follows.
    void Stop();
    /// Has the work called at once: something came earlier than its last deadline.
    void Wake();
    /// Wakes every such thread of the process: the installed clock was moved by hand.
    static void WakeAll();

private:
    void run(const Work &work);

    std::mutex m_mutex;
    std::condition_variable m_called;
    bool m_isWoken = false;
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace Nodes
