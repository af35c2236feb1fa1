#include "nodes/storage/records/PatientThread.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace Nodes {

struct PatientThread::State
{
    std::mutex mutex;
    std::condition_variable ended;
    bool isRunning = false;
    std::atomic<std::thread::id> id{};
};

PatientThread::PatientThread() : m_state(std::make_shared<State>()) {}

PatientThread::~PatientThread()
{
    if (m_thread.joinable())
        m_thread.detach();
}

void PatientThread::Start(std::function<void()> run)
{
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->isRunning = true;
    }
    m_thread = std::thread([state = m_state, run = std::move(run)]() mutable {
        state->id = std::this_thread::get_id();
        run();
        run = nullptr; // what it kept alive goes first
        const std::lock_guard lock(state->mutex);
        state->isRunning = false;
        state->ended.notify_all();
    });
}

bool PatientThread::Join(std::chrono::milliseconds patience)
{
    if (!m_thread.joinable())
        return !IsRunning();
    bool hasEnded = false;
    {
        std::unique_lock lock(m_state->mutex);
        hasEnded = m_state->ended.wait_for(lock, patience, [this] { return !m_state->isRunning; });
    }
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
    return hasEnded;
}

bool PatientThread::IsRunning() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->isRunning;
}

bool PatientThread::IsOwn() const
{
    return m_state->id == std::this_thread::get_id();
}

} // namespace Nodes
