#include "nodes/archive/store/blocks/StoredKeys.h"

namespace Nodes {

Result StoredKeys::Load()
{
    std::vector<ArchiveTables::Keys> stored;
    const Result result = m_tables.ReadKeys(stored);
    m_written.clear();
    for (const ArchiveTables::Keys &keys : stored)
        m_written.emplace(keys.first, keys.last);
    m_intervals = m_written;
    return result;
}

StoredKeys::Intervals::const_iterator StoredKeys::at(std::uint64_t key) const
{
    auto interval = m_intervals.upper_bound(key);
    if (interval == m_intervals.begin() || (--interval)->second < key)
        return m_intervals.end();
    return interval;
}

bool StoredKeys::Has(std::uint64_t key) const
{
    return at(key) != m_intervals.end();
}

void StoredKeys::Add(std::uint64_t key)
{
    std::uint64_t last = key;
    if (const auto next = m_intervals.find(key + 1); next != m_intervals.end()) {
        last = next->second;
        m_intervals.erase(next);
    }
    if (const auto before = at(key - 1); key > 0 && before != m_intervals.end())
        m_intervals[before->first] = last;
    else
        m_intervals[key] = last;
}

/// What is in both as it is costs nothing but this comparison: there are few.
Result StoredKeys::Save()
{
    Result result;
    for (const auto &[first, last] : m_written) {
        if (result && m_intervals.find(first) == m_intervals.end())
            result = m_tables.EraseKeys(first);
    }
    for (const auto &[first, last] : m_intervals) {
        const auto written = m_written.find(first);
        if (result && (written == m_written.end() || written->second != last))
            result = m_tables.PutKeys({first, last});
    }
    m_written = m_intervals;
    return result;
}

} // namespace Nodes
