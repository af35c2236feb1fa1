#include "nodes/drivers/PeriodicWorker.h"

#include "nodes/drivers/PollSchedule.h"
#include "nodes/values/Clock.h"

#include <chrono>

namespace Nodes {

PeriodicWorker::~PeriodicWorker()
{
    Stop();
}

void PeriodicWorker::Start(Timestamp period, std::function<void()> work)
{
    Stop();
    m_isStopping = false;
    m_thread = std::thread([this, period, work = std::move(work)] { run(period, work); });
}

void PeriodicWorker::Stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    m_wake.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

void PeriodicWorker::run(Timestamp period, const std::function<void()> &work)
{
    PollSchedule schedule(period, Clock::Current().Steady());
    std::unique_lock lock(m_mutex);
    while (!m_isStopping) {
        lock.unlock();
        work();
        lock.lock();
        const Timestamp now = Clock::Current().Steady();
        schedule.Advance(now);
        m_wake.wait_for(lock, std::chrono::microseconds(schedule.GetNext() - now),
                        [this] { return m_isStopping; });
    }
}

} // namespace Nodes
