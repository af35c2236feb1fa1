#include "nodes/journal/JournalRescuer.h"

#include "nodes/journal/JournalOverflow.h"
#include "nodes/journal/JournalQueue.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::size_t batchRows = 1000;

} // namespace

JournalRescuer::JournalRescuer(JournalQueue &queue, JournalOverflow &overflow,
                               std::chrono::milliseconds patience)
    : m_queue(queue), m_overflow(overflow), m_patience(patience)
{
}

void JournalRescuer::Start(std::shared_ptr<void> owner)
{
    if (m_thread.IsRunning())
        return;
    m_isStopping = false;
    m_thread.Start([this, owner = std::move(owner)] {
        while (pause())
            rescue();
    });
}

void JournalRescuer::Stop(std::chrono::milliseconds patience)
{
    {
        const std::lock_guard lock(m_mutex);
        m_isStopping = true;
    }
    m_stopped.notify_all();
    m_thread.Join(patience);
}

void JournalRescuer::Empty(std::shared_ptr<void> owner, std::chrono::milliseconds patience)
{
    if (m_thread.IsRunning()) { // its disk hangs as well
        (void)m_queue.Abandon();
        return;
    }
    m_thread.Start([this, owner = std::move(owner)] { empty(); });
    m_thread.Join(patience);
}

bool JournalRescuer::pause()
{
    std::unique_lock lock(m_mutex);
    m_stopped.wait_for(lock, m_patience / 4, [this] { return m_isStopping; });
    return !m_isStopping;
}

void JournalRescuer::rescue()
{
    for (;;) {
        const std::vector<JournalRow> rows = m_queue.TakeBehind(batchRows, m_patience);
        if (rows.empty())
            return;
        const bool areSafe = bool(m_overflow.Append(rows));
        m_queue.SettleBehind(areSafe);
        if (!areSafe)
            return;
    }
}

void JournalRescuer::empty()
{
    const std::vector<JournalRow> rows = m_queue.Abandon();
    for (std::size_t from = 0; from < rows.size(); from += batchRows) {
        const auto begin = rows.begin() + std::ptrdiff_t(from);
        const std::size_t count = std::min(batchRows, rows.size() - from);
        if (!m_overflow.Append({begin, begin + std::ptrdiff_t(count)}))
            return;
        m_queue.SettleAbandoned(count);
    }
}

} // namespace Nodes
