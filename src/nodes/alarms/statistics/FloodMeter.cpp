#include "nodes/alarms/statistics/FloodMeter.h"

#include <algorithm>
#include <utility>

namespace Nodes {

FloodMeter::FloodMeter(Limits limits)
    : m_lasts(std::size_t(std::clamp(limits.below, 1, std::max(limits.above, 1)))),
      m_times(std::size_t(std::max(limits.above, 1)) + 1)
{
}

std::optional<FloodMeter::Flood> FloodMeter::Add(Timestamp at)
{
    std::optional<Flood> over = Advance(at);
    m_times[m_next] = at;
    m_next = (m_next + 1) % m_times.size();
    const Timestamp first = newest(m_times.size());
    if (!IsFlood() && first != 0 && at - first < Window)
        m_since = at;
    return over;
}

std::optional<FloodMeter::Flood> FloodMeter::Advance(Timestamp now)
{
    if (!IsFlood())
        return std::nullopt;
    const Timestamp end = newest(m_lasts) + Window;
    if (now < end)
        return std::nullopt;
    return Flood{std::exchange(m_since, 0), end};
}

} // namespace Nodes
