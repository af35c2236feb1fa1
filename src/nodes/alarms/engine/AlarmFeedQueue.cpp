#include "nodes/alarms/engine/AlarmFeedQueue.h"

#include <algorithm>
#include <utility>

namespace Nodes {

void AlarmFeedQueue::Reset(std::size_t alarms)
{
    m_changed.clear();
    m_isChanged.assign(alarms, false);
    m_events = 0;
    m_isAnew = true;
}

void AlarmFeedQueue::Add(std::size_t alarm)
{
    ++m_events;
    if (m_isChanged[alarm])
        return;
    m_isChanged[alarm] = true;
    m_changed.push_back(alarm);
}

bool AlarmFeedQueue::ClaimWake()
{
    if (m_isWoken || (!m_isAnew && m_changed.empty()))
        return false;
    m_isWoken = true;
    return true;
}

std::vector<std::size_t> AlarmFeedQueue::Take(std::size_t limit, AlarmFeed::Batch &batch)
{
    const auto end = m_changed.begin() +
                     std::ptrdiff_t(std::min(std::max<std::size_t>(limit, 1), m_changed.size()));
    std::vector<std::size_t> taken(m_changed.begin(), end);
    m_changed.erase(m_changed.begin(), end);
    for (const std::size_t alarm : taken)
        m_isChanged[alarm] = false;
    batch.isAnew = std::exchange(m_isAnew, false);
    batch.events = std::exchange(m_events, 0);
    batch.hasMore = !m_changed.empty();
    m_isWoken = batch.hasMore; // the reader comes again by itself
    return taken;
}

void AlarmFeedQueue::Wake()
{
    const std::lock_guard lock(m_wakeMutex);
    if (m_wake)
        m_wake();
}

void AlarmFeedQueue::Close()
{
    const std::lock_guard lock(m_wakeMutex);
    m_wake = nullptr;
}

} // namespace Nodes
