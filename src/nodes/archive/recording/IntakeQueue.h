#pragma once

#include "nodes/NodesExport.h"

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace Nodes {

class SignalIntake;

/// Which signals have samples to be carried away. Any thread.
class NODES_EXPORT IntakeQueue
{
public:
    /// `wake` is called once when `many` samples wait, on a publishing thread, and must not wait.
    IntakeQueue(std::size_t many, std::function<void()> wake);

    void Add(std::shared_ptr<SignalIntake> signal);
    /// One more sample of any of them.
    void Count()
    {
        if (m_count.fetch_add(1, std::memory_order_relaxed) + 1 == m_many)
            wake();
    }
    /// Those that were added since the last call.
    std::vector<std::shared_ptr<SignalIntake>> Take();
    bool AreMany() const { return m_count.load(std::memory_order_relaxed) >= m_many; }
    /// `wake` neither runs nor will run when this returns.
    void Close();

private:
    void wake();

    const std::size_t m_many;
    std::atomic<std::size_t> m_count{0};
    std::mutex m_mutex; // of the rest
    std::vector<std::shared_ptr<SignalIntake>> m_signals;
    std::function<void()> m_wake;
};

} // namespace Nodes
