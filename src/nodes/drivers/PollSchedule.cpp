#include "nodes/drivers/PollSchedule.h"

#include <algorithm>

namespace Nodes {

PollSchedule::PollSchedule(Timestamp period, Timestamp start)
    : m_period(std::max<Timestamp>(period, 1000)), m_next(start)
{
}

void PollSchedule::Advance(Timestamp now)
{
    if (now >= m_next)
        m_next += m_period * ((now - m_next) / m_period + 1);
}

} // namespace Nodes
