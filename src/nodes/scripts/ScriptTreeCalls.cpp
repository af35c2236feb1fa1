#include "nodes/scripts/ScriptTreeCalls.h"

namespace Nodes {

void ScriptTreeCalls::SetDeadline(int milliseconds)
{
    m_deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
}

void ScriptTreeCalls::Cancel()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->isCancelled = true;
    m_state->changed.notify_all();
}

Result ScriptTreeCalls::Call(const ScriptRunner::Task &task)
{
    auto phase = std::make_shared<Phase>(Phase::Waiting);
    m_poster([state = m_state, phase, task] {
        std::unique_lock lock(state->mutex);
        if (*phase == Phase::Abandoned)
            return;
        *phase = Phase::Running;
        lock.unlock();
        task();
        lock.lock();
        *phase = Phase::Done;
        state->changed.notify_all();
    });
    std::unique_lock lock(m_state->mutex);
    m_state->changed.wait_until(lock, m_deadline, [&] {
        return *phase == Phase::Done || (m_state->isCancelled && *phase == Phase::Waiting);
    });
    // What has begun works on the caller's variables: it is waited for.
    m_state->changed.wait(lock, [&] { return *phase != Phase::Running; });
    if (*phase == Phase::Done)
        return Result();
    *phase = Phase::Abandoned;
    return m_state->isCancelled ? Result(Result::Cancelled, "the station stops")
                                : Result(Result::Timeout, "takes too long");
}

} // namespace Nodes
