#include "nodes/archive/history/HistoryCache.h"

#include "nodes/values/Clock.h"

#include <utility>

namespace Nodes {

namespace {

constexpr Timestamp believed = 30 * 1000000;

std::size_t bytesOf(const HistoryColumn &column)
{
    constexpr std::size_t sample = sizeof(Timestamp) + sizeof(double) + sizeof(Quality);
    return 256 + column.times.size() * sample + column.intervals.size() * sizeof(IntervalSample);
}

} // namespace

HistoryCache::Column HistoryCache::Find(const Place &place)
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_places.find(place);
    if (found == m_places.end())
        return nullptr;
    if (found->second->until < Clock::Current().Steady()) {
        remove(found->second);
        return nullptr;
    }
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    return m_entries.front().column;
}

void HistoryCache::Keep(const Place &place, Column column)
{
    const std::size_t bytes = bytesOf(*column);
    const std::lock_guard lock(m_mutex);
    const auto former = m_places.find(place);
    if (former != m_places.end())
        remove(former->second);
    m_entries.push_front({place, std::move(column), Clock::Current().Steady() + believed, bytes});
    m_places[place] = m_entries.begin();
    m_bytes += bytes;
    while (m_bytes > m_capacity)
        remove(std::prev(m_entries.end()));
}

void HistoryCache::Forget(const ArchiveSignalKey &signal)
{
    const std::lock_guard lock(m_mutex);
    for (auto entry = m_entries.begin(); entry != m_entries.end();) {
        const auto next = std::next(entry);
        if (entry->place.signal.IsSame(signal))
            remove(entry);
        entry = next;
    }
}

void HistoryCache::remove(Entries::iterator entry)
{
    m_bytes -= entry->bytes;
    m_places.erase(entry->place);
    m_entries.erase(entry);
}

} // namespace Nodes
