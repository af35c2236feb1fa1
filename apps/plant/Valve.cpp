#include "apps/plant/Valve.h"

#include <algorithm>

namespace Plant {

Valve::Valve(double strokeSeconds, double position)
    : m_strokeSeconds(strokeSeconds), m_position(position)
{
}

void Valve::step(double seconds, double target)
{
    const double reach = seconds / m_strokeSeconds;
    const double wanted = std::clamp(target, 0.0, 1.0);
    m_position += std::clamp(wanted - m_position, -reach, reach);
}

void Valve::slamShut()
{
    m_position = 0.0;
}

} // namespace Plant
