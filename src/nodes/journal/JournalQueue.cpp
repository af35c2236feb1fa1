#include "nodes/journal/JournalQueue.h"

#include <algorithm>
#include <utility>

namespace Nodes {

using std::chrono::milliseconds;

bool JournalQueue::Push(JournalRow row, bool isWriter)
{
    const std::lock_guard lock(m_mutex);
    if (!isWriter && m_entries.size() >= m_capacity) {
        ++m_rejected;
        ++m_lost;
        return false;
    }
    m_entries.push_back({std::move(row), ++m_pushed});
    m_arrived.notify_one();
    return true;
}

bool JournalQueue::WaitSettled(milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    const std::uint64_t last = m_pushed;
    const std::uint64_t failures = m_failures;
    const auto isSettled = [&] { return m_entries.empty() || m_entries.front().number > last; };
    m_isFlushAsked = true;
    m_arrived.notify_one();
    m_progressed.wait_for(lock, patience,
                          [&] { return isSettled() || m_failures != failures || !m_hasWriter; });
    return isSettled();
}

void JournalQueue::SetWriter(bool isPresent)
{
    const std::lock_guard lock(m_mutex);
    m_hasWriter = isPresent;
    m_isStuck = false;
    if (isPresent)
        m_isShut = m_isAbandoned = false;
    m_progressed.notify_all();
}

/// Rows that the writer may take now.
std::size_t JournalQueue::takeable(bool isStoreReady) const
{
    if (m_ahead > 0)
        return m_ahead;
    const bool isHeld = m_behind > 0 || (m_hasRescued && isStoreReady);
    return isHeld || m_isAbandoned ? 0 : m_entries.size();
}

bool JournalQueue::Wait(milliseconds pause)
{
    std::unique_lock lock(m_mutex);
    m_busySince = Time();
    m_arrived.wait_for(lock, pause, [this] {
        // A stuck writer sleeps its pause out: its rows are still there.
        return m_isShut || m_isFlushAsked || (!m_isStuck && takeable(false) > 0);
    });
    m_busySince = std::chrono::steady_clock::now();
    return !m_isShut;
}

JournalQueue::Batch JournalQueue::Take(std::size_t count, bool isStoreReady)
{
    const std::lock_guard lock(m_mutex);
    Batch batch;
    batch.isAhead = !m_hasRescued || m_ahead > 0;
    m_taken = std::min(count, takeable(isStoreReady));
    batch.rows = copy(0, m_taken);
    return batch;
}

void JournalQueue::Settle()
{
    const std::lock_guard lock(m_mutex);
    m_busySince = std::chrono::steady_clock::now();
    if (m_isAbandoned)
        return;
    erase(0, m_taken);
    m_ahead -= std::min(m_ahead, m_taken);
    m_taken = 0;
    m_isStuck = false;
    m_progressed.notify_all();
}

void JournalQueue::Return()
{
    const std::lock_guard lock(m_mutex);
    m_taken = 0;
    m_isStuck = true;
    ++m_failures;
    m_progressed.notify_all();
}

void JournalQueue::Touch()
{
    const std::lock_guard lock(m_mutex);
    m_busySince = std::chrono::steady_clock::now();
}

bool JournalQueue::TakeFlushRequest()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_isFlushAsked, false);
}

std::size_t JournalQueue::TakeRejected()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_rejected, 0);
}

void JournalQueue::Shut()
{
    const std::lock_guard lock(m_mutex);
    m_isShut = true;
    m_arrived.notify_one();
}

bool JournalQueue::IsShut() const
{
    const std::lock_guard lock(m_mutex);
    return m_isShut;
}

void JournalQueue::SetRescued(bool areThere)
{
    const std::lock_guard lock(m_mutex);
    // Rows being rescued meanwhile would get behind rows that are newer.
    m_hasRescued = areThere || m_behind > 0;
    if (!m_hasRescued)
        m_ahead = 0;
    m_arrived.notify_one();
}

std::vector<JournalRow> JournalQueue::TakeBehind(std::size_t count, milliseconds patience)
{
    const std::lock_guard lock(m_mutex);
    if (m_isAbandoned || busyFor() <= patience || m_entries.size() <= m_taken)
        return {};
    m_ahead = std::max(m_ahead, m_taken);
    m_hasRescued = true;
    const std::size_t first = m_ahead;
    m_behind = std::min(count, m_entries.size() - std::min(first, m_entries.size()));
    return copy(first, m_behind);
}

void JournalQueue::SettleBehind(bool areSafe)
{
    const std::lock_guard lock(m_mutex);
    if (areSafe && !m_isAbandoned)
        erase(m_ahead, m_behind);
    m_behind = 0;
    m_arrived.notify_one();
    m_progressed.notify_all();
}

std::vector<JournalRow> JournalQueue::Abandon()
{
    const std::lock_guard lock(m_mutex);
    m_isAbandoned = true;
    m_taken = m_behind = m_ahead = 0;
    return copy(0, m_entries.size());
}

void JournalQueue::SettleAbandoned(std::size_t count)
{
    const std::lock_guard lock(m_mutex);
    erase(0, count);
}

std::vector<JournalRow> JournalQueue::copy(std::size_t from, std::size_t count) const
{
    std::vector<JournalRow> rows;
    rows.reserve(count);
    for (std::size_t i = from; i < from + count; ++i)
        rows.push_back(m_entries[i].row);
    return rows;
}

void JournalQueue::erase(std::size_t from, std::size_t count)
{
    const auto begin = m_entries.begin() + std::ptrdiff_t(from);
    m_entries.erase(begin, begin + std::ptrdiff_t(count));
}

std::size_t JournalQueue::Size() const
{
    const std::lock_guard lock(m_mutex);
    return m_entries.size();
}

std::uint64_t JournalQueue::Lost() const
{
    const std::lock_guard lock(m_mutex);
    return m_lost;
}

milliseconds JournalQueue::BusyFor() const
{
    const std::lock_guard lock(m_mutex);
    return busyFor();
}

milliseconds JournalQueue::busyFor() const
{
    return m_busySince == Time() ? milliseconds(0)
                                 : std::chrono::duration_cast<milliseconds>(
                                       std::chrono::steady_clock::now() - m_busySince);
}

} // namespace Nodes
