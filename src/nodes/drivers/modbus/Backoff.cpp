#include "nodes/drivers/modbus/Backoff.h"

#include <algorithm>

namespace Nodes {

Backoff::Backoff(int minimum, int maximum, unsigned seed)
    : m_minimum(std::max(minimum, 1)),
      m_maximum(std::max(maximum, m_minimum)),
      m_current(m_minimum),
      m_random(seed)
{
}

int Backoff::Next()
{
    std::uniform_int_distribution<int> shortened(m_current - m_current / 4, m_current);
    const int wait = shortened(m_random);
    m_current = m_current > m_maximum / 2 ? m_maximum : m_current * 2;
    return wait;
}

} // namespace Nodes
