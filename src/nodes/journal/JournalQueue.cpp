#include "nodes/journal/JournalQueue.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Nodes {

bool JournalQueue::waitForSpace(std::unique_lock<std::mutex> &lock)
{
    m_progressed.wait(lock,
                      [this] { return m_rows.size() < m_capacity || !m_hasWriter || m_isStuck; });
    return m_rows.size() < m_capacity;
}

bool JournalQueue::Push(JournalRow row, bool isWriter)
{
    std::unique_lock lock(m_mutex);
    if (!isWriter && !waitForSpace(lock)) {
        ++m_rejected;
        return false;
    }
    m_rows.push_back(std::move(row));
    ++m_pushed;
    m_arrived.notify_one();
    return true;
}

bool JournalQueue::WaitSettled()
{
    std::unique_lock lock(m_mutex);
    const std::uint64_t target = m_pushed;
    const std::uint64_t failures = m_failures;
    m_isFlushAsked = true;
    m_arrived.notify_one();
    m_progressed.wait(
        lock, [&] { return m_settled >= target || m_failures != failures || !m_hasWriter; });
    return m_settled >= target;
}

void JournalQueue::SetWriter(bool isPresent)
{
    const std::lock_guard lock(m_mutex);
    m_hasWriter = isPresent;
    m_isStuck = false;
    m_isShut = false;
    m_progressed.notify_all();
}

bool JournalQueue::Take(std::vector<JournalRow> &rows, std::size_t count,
                        std::chrono::milliseconds pause)
{
    rows.clear();
    std::unique_lock lock(m_mutex);
    const auto isCalled = [this] {
        // A stuck writer sleeps its pause out: its rows are still there.
        return m_isShut || m_isFlushAsked || (!m_isStuck && !m_rows.empty());
    };
    if (pause.count() > 0)
        m_arrived.wait_for(lock, pause, isCalled);
    else
        m_arrived.wait(lock, isCalled);
    const std::size_t taken = std::min(count, m_rows.size());
    const auto end = m_rows.begin() + static_cast<std::ptrdiff_t>(taken);
    rows.assign(std::make_move_iterator(m_rows.begin()), std::make_move_iterator(end));
    m_rows.erase(m_rows.begin(), end);
    return taken > 0 || !m_isShut;
}

void JournalQueue::Settle(std::size_t count)
{
    const std::lock_guard lock(m_mutex);
    m_settled += count;
    m_isStuck = false;
    m_progressed.notify_all();
}

void JournalQueue::Return(std::vector<JournalRow> rows)
{
    const std::lock_guard lock(m_mutex);
    m_rows.insert(m_rows.begin(), std::make_move_iterator(rows.begin()),
                  std::make_move_iterator(rows.end()));
    m_isStuck = true;
    ++m_failures;
    m_progressed.notify_all();
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

std::size_t JournalQueue::Size() const
{
    const std::lock_guard lock(m_mutex);
    return m_rows.size();
}

} // namespace Nodes
