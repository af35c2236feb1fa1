#include "nodes/archive/recording/IntakeQueue.h"

#include <utility>

namespace Nodes {

IntakeQueue::IntakeQueue(std::size_t many, std::function<void()> wake)
    : m_many(many), m_wake(std::move(wake))
{
}

void IntakeQueue::Add(std::shared_ptr<SignalIntake> signal)
{
    const std::lock_guard lock(m_mutex);
    m_signals.push_back(std::move(signal));
}

std::vector<std::shared_ptr<SignalIntake>> IntakeQueue::Take()
{
    m_count.store(0, std::memory_order_relaxed);
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_signals, {});
}

void IntakeQueue::Close()
{
    const std::lock_guard lock(m_mutex);
    m_wake = nullptr;
}

void IntakeQueue::wake()
{
    const std::lock_guard lock(m_mutex);
    if (m_wake)
        m_wake();
}

} // namespace Nodes
