#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace Nodes {

/// A thread that calls a function at once and then once a period, without drift. Start and Stop
/// belong to one thread; the function runs on the worker's.
class NODES_EXPORT PeriodicWorker
{
public:
    PeriodicWorker() = default;
    ~PeriodicWorker();
    PeriodicWorker(const PeriodicWorker &) = delete;
    PeriodicWorker &operator=(const PeriodicWorker &) = delete;

    /// `period` in microseconds. Ends an earlier run first.
    void Start(Timestamp period, std::function<void()> work);
    /// Returns after the call that is running, if any, has ended.
    void Stop();

private:
    void run(Timestamp period, const std::function<void()> &work);

    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace Nodes
