#include "nodes/timers/DeadlineThread.h"

#include "nodes/values/Clock.h"

#include <algorithm>
#include <chrono>
#include <set>

namespace Nodes {

namespace {

constexpr Timestamp longestSleep = 1000000;

struct Registry
{
    std::mutex mutex;
    std::set<DeadlineThread *> threads;
};

Registry &registry()
{
    static auto *instance = new Registry;
    return *instance;
}

} // namespace

DeadlineThread::DeadlineThread()
{
    const std::lock_guard lock(registry().mutex);
    registry().threads.insert(this);
}

DeadlineThread::~DeadlineThread()
{
    {
        const std::lock_guard lock(registry().mutex);
        registry().threads.erase(this);
    }
    Stop();
}

void DeadlineThread::Start(Work work)
{
    Stop();
    {
        const std::lock_guard lock(m_mutex); // others may wake it before it runs
        m_isStopping = false;
        m_isWoken = false;
    }
    m_thread = std::thread([this, work = std::move(work)] { run(work); });
}

void DeadlineThread::Stop()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    m_called.notify_one();
    m_thread.join();
}

void DeadlineThread::Wake()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isWoken = true;
    }
    m_called.notify_one();
}

void DeadlineThread::WakeAll()
{
    const std::lock_guard lock(registry().mutex);
    for (DeadlineThread *thread : registry().threads)
        thread->Wake();
}

void DeadlineThread::run(const Work &work)
{
    std::unique_lock lock(m_mutex);
    while (!m_isStopping) {
        m_isWoken = false;
        lock.unlock();
        const Timestamp next = work();
        const Timestamp now = Clock::Current().Steady();
        const Timestamp sleep = next <= now ? 0 : std::min(next - now, longestSleep);
        lock.lock();
        m_called.wait_for(lock, std::chrono::microseconds(sleep),
                          [this] { return m_isWoken || m_isStopping; });
    }
}

} // namespace Nodes
