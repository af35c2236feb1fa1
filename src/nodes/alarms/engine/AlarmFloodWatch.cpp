#include "nodes/alarms/engine/AlarmFloodWatch.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;

} // namespace

void AlarmFloodWatch::Advance(Timestamp steady, Timestamp wall)
{
    const std::int64_t now = std::max(m_now, steady / second);
    // Seconds that have left the window since.
    for (std::int64_t i = std::max(m_now + 1, now - Window + 1); i <= now; ++i) {
        int &slot = m_bySecond[std::size_t(i % Window)];
        m_flood.raisedInTenMinutes -= slot;
        slot = 0;
    }
    m_now = now;
    judge(wall);
}

void AlarmFloodWatch::Add(Timestamp steady, Timestamp wall)
{
    Advance(steady, wall);
    ++m_bySecond[std::size_t(m_now % Window)];
    ++m_flood.raisedInTenMinutes;
    if (m_flood.isFlood)
        ++m_raisedInFlood;
    judge(wall);
}

void AlarmFloodWatch::judge(Timestamp wall)
{
    if (!m_flood.isFlood && m_flood.raisedInTenMinutes > m_begin) {
        m_flood.isFlood = true;
        m_flood.since = wall;
        m_raisedInFlood = std::uint64_t(m_flood.raisedInTenMinutes);
    } else if (m_flood.isFlood && m_flood.raisedInTenMinutes < m_end) {
        m_flood.isFlood = false;
        m_flood.since = 0;
    }
}

Timestamp AlarmFloodWatch::Deadline() const
{
    if (m_flood.raisedInTenMinutes == 0)
        return INT64_MAX;
    return (m_now + 1) * second;
}

} // namespace Nodes
