#include "nodes/storage/records/RecordQueue.h"

#include "nodes/storage/Digest.h"
#include "nodes/storage/records/RecordFrame.h"

#include <algorithm>
#include <utility>

namespace Nodes {

using std::chrono::milliseconds;

RecordQueue::RecordQueue(Bounds capacity, std::uint32_t version)
    : m_capacity(capacity), m_version(version), m_lastKey(RandomStart())
{
}

std::uint64_t RecordQueue::Push(std::string bytes, bool isWriter)
{
    const std::lock_guard lock(m_mutex);
    const bool hasRoom = held() + m_waiting.size() < m_capacity.records &&
                         m_bytes + bytes.size() <= m_capacity.bytes;
    const bool isTooLong = bytes.size() > RecordFrame::LongestRecord;
    if (isTooLong || (!isWriter && !hasRoom)) {
        ++m_rejected;
        ++m_lost;
        return 0;
    }
    m_bytes += bytes.size();
    m_waiting.push_back({++m_lastKey, m_version, std::move(bytes)});
    if (m_waiting.size() == 1)
        m_arrived.notify_one();
    return m_lastKey;
}

Record RecordQueue::Make(std::string bytes)
{
    const std::lock_guard lock(m_mutex);
    return {++m_lastKey, m_version, std::move(bytes)};
}

bool RecordQueue::isSettled(std::uint64_t upTo) const
{
    if (m_held)
        return m_held->front().key > upTo;
    return m_waiting.empty() || m_waiting.front().key > upTo;
}

bool RecordQueue::WaitSettled(milliseconds patience)
{
    std::unique_lock lock(m_mutex);
    const std::uint64_t last = m_lastKey;
    const std::uint64_t failures = m_failures;
    m_isFlushAsked = true;
    m_arrived.notify_one();
    m_progressed.wait_for(
        lock, patience, [&] { return isSettled(last) || m_failures != failures || !m_hasWriter; });
    return isSettled(last);
}

void RecordQueue::SetWriter(bool isPresent)
{
    const std::lock_guard lock(m_mutex);
    m_hasWriter = isPresent;
    m_isStuck = false;
    if (isPresent)
        m_isShut = m_isAbandoned = false;
    m_progressed.notify_all();
}

/// Records that the writer may take now; it holds none.
std::size_t RecordQueue::takeable(bool isStoreReady) const
{
    if (m_ahead > 0)
        return m_ahead;
    const bool isHeldBack = m_behind > 0 || (m_hasRescued && isStoreReady);
    return isHeldBack || m_isAbandoned ? 0 : m_waiting.size();
}

bool RecordQueue::Wait(milliseconds pause)
{
    std::unique_lock lock(m_mutex);
    m_busySince = Time();
    m_arrived.wait_for(lock, pause, [this] {
        // A stuck writer sleeps its pause out: its records are still there.
        return m_isShut || m_isFlushAsked || (!m_isStuck && takeable(false) > 0);
    });
    m_busySince = std::chrono::steady_clock::now();
    return !m_isShut;
}

RecordQueue::Batch RecordQueue::Take(const Bounds &most, bool isStoreReady)
{
    auto taken = std::make_shared<Records>();
    const std::lock_guard lock(m_mutex);
    const std::size_t count = fitting(0, takeable(isStoreReady), most);
    const bool isAhead = !m_hasRescued || m_ahead > 0;
    if (count == 0)
        return {std::move(taken), isAhead};
    const auto end = m_waiting.begin() + std::ptrdiff_t(count);
    taken->assign(std::make_move_iterator(m_waiting.begin()), std::make_move_iterator(end));
    m_waiting.erase(m_waiting.begin(), end);
    m_held = taken;
    return {std::move(taken), isAhead};
}

void RecordQueue::Settle()
{
    const std::lock_guard lock(m_mutex);
    m_busySince = std::chrono::steady_clock::now();
    if (m_isAbandoned || !m_held)
        return;
    for (const Record &record : *m_held)
        m_bytes -= record.bytes.size();
    m_ahead -= std::min(m_ahead, m_held->size());
    m_held.reset();
    m_isStuck = false;
    m_progressed.notify_all();
}

void RecordQueue::Return()
{
    const std::lock_guard lock(m_mutex);
    takeBack();
    m_isStuck = true;
    ++m_failures;
    m_progressed.notify_all();
}

/// Copies: a writer that was given up may still be reading its own.
void RecordQueue::takeBack()
{
    if (m_held)
        m_waiting.insert(m_waiting.begin(), m_held->begin(), m_held->end());
    m_held.reset();
}

void RecordQueue::Touch()
{
    const std::lock_guard lock(m_mutex);
    m_busySince = std::chrono::steady_clock::now();
}

bool RecordQueue::TakeFlushRequest()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_isFlushAsked, false);
}

std::size_t RecordQueue::TakeRejected()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_rejected, 0);
}

void RecordQueue::Shut()
{
    const std::lock_guard lock(m_mutex);
    m_isShut = true;
    m_arrived.notify_one();
}

void RecordQueue::SetRescued(bool areThere)
{
    const std::lock_guard lock(m_mutex);
    // Records being rescued meanwhile would get behind records that are newer.
    m_hasRescued = areThere || m_behind > 0;
    if (!m_hasRescued)
        m_ahead = 0;
    m_arrived.notify_one();
}

Records RecordQueue::TakeBehind(const Bounds &most, milliseconds patience)
{
    const std::lock_guard lock(m_mutex);
    if (m_isAbandoned || busyFor() <= patience || m_waiting.empty())
        return {};
    m_ahead = std::max(m_ahead, held());
    m_hasRescued = true;
    const std::size_t first = m_ahead - held();
    m_behind = fitting(first, m_waiting.size() - std::min(first, m_waiting.size()), most);
    return copy(first, m_behind);
}

void RecordQueue::SettleBehind(bool areSafe)
{
    const std::lock_guard lock(m_mutex);
    if (areSafe && !m_isAbandoned)
        erase(m_ahead - held(), m_behind);
    m_behind = 0;
    m_arrived.notify_one();
    m_progressed.notify_all();
}

void RecordQueue::Abandon()
{
    const std::lock_guard lock(m_mutex);
    m_isAbandoned = true;
    m_behind = m_ahead = 0;
    takeBack();
}

Records RecordQueue::TakeAbandoned(const Bounds &most) const
{
    const std::lock_guard lock(m_mutex);
    return copy(0, fitting(0, m_waiting.size(), most));
}

void RecordQueue::SettleAbandoned(std::size_t count)
{
    const std::lock_guard lock(m_mutex);
    erase(0, count);
}

/// How many of `count` records waiting fit, one at least.
std::size_t RecordQueue::fitting(std::size_t from, std::size_t count, const Bounds &most) const
{
    const std::size_t limit = std::min(count, most.records);
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < limit; ++i) {
        bytes += m_waiting[from + i].bytes.size();
        if (bytes > most.bytes && i > 0)
            return i;
    }
    return limit;
}

Records RecordQueue::copy(std::size_t from, std::size_t count) const
{
    const auto begin = m_waiting.begin() + std::ptrdiff_t(from);
    return {begin, begin + std::ptrdiff_t(count)};
}

void RecordQueue::erase(std::size_t from, std::size_t count)
{
    const auto begin = m_waiting.begin() + std::ptrdiff_t(from);
    for (std::size_t i = 0; i < count; ++i)
        m_bytes -= begin[std::ptrdiff_t(i)].bytes.size();
    m_waiting.erase(begin, begin + std::ptrdiff_t(count));
}

std::size_t RecordQueue::Size() const
{
    const std::lock_guard lock(m_mutex);
    return held() + m_waiting.size();
}

std::uint64_t RecordQueue::Lost() const
{
    const std::lock_guard lock(m_mutex);
    return m_lost;
}

milliseconds RecordQueue::BusyFor() const
{
    const std::lock_guard lock(m_mutex);
    return busyFor();
}

milliseconds RecordQueue::busyFor() const
{
    return m_busySince == Time() ? milliseconds(0)
                                 : std::chrono::duration_cast<milliseconds>(
                                       std::chrono::steady_clock::now() - m_busySince);
}

} // namespace Nodes
