#pragma once

#include <atomic>
#include <cstddef>

namespace Nodes {

/// How far a load has come and the wish to end it. Shared by the loading thread and whoever shows
/// it; any thread. The total is 0 until the file has been parsed.
class LoadProgress
{
public:
    void Cancel() { m_isCancelled.store(true, std::memory_order_relaxed); }
    bool IsCancelled() const { return m_isCancelled.load(std::memory_order_relaxed); }

    void SetTotal(std::size_t nodes) { m_total.store(nodes, std::memory_order_relaxed); }
    void SetDone(std::size_t nodes) { m_done.store(nodes, std::memory_order_relaxed); }
    std::size_t GetTotal() const { return m_total.load(std::memory_order_relaxed); }
    std::size_t GetDone() const { return m_done.load(std::memory_order_relaxed); }

private:
    std::atomic<std::size_t> m_done{0};
    std::atomic<std::size_t> m_total{0};
    std::atomic<bool> m_isCancelled{false};
};

} // namespace Nodes
