#include "nodes/alarms/statistics/FloodMeter.h"

#include <utility>

namespace Nodes {

std::optional<FloodMeter::Flood> FloodMeter::Add(Timestamp at)
{
    std::optional<Flood> over = Advance(at);
    m_times[m_next] = at;
    m_next = (m_next + 1) % Begins;
    const Timestamp first = newest(Begins);
    if (!IsFlood() && first != 0 && at - first < Window)
        m_since = at;
    return over;
}

std::optional<FloodMeter::Flood> FloodMeter::Advance(Timestamp now)
{
    if (!IsFlood())
        return std::nullopt;
    const Timestamp end = newest(Lasts) + Window;
    if (now < end)
        return std::nullopt;
    return Flood{std::exchange(m_since, 0), end};
}

} // namespace Nodes
