#include "nodes/storage/records/RecordPortion.h"

#include <algorithm>

namespace Nodes {

void RecordPortion::Learn(std::size_t records, std::chrono::steady_clock::duration taken)
{
    const std::size_t least = m_limits.usual.records;
    if (taken > m_limits.longest)
        m_now.records = std::max(least, std::min(records, m_now.records) / 2);
    else if (records >= m_now.records && taken * 2 <= m_limits.longest)
        m_now.records = std::max(least, std::min(m_limits.mostRecords, m_now.records * 2));
}

} // namespace Nodes
