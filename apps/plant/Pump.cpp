#include "apps/plant/Pump.h"

#include <cmath>

namespace Plant {

namespace {
constexpr double runUpSeconds = 2.0;
}

void Pump::step(double seconds, bool &start, bool failing)
{
    if (start && failing)
        m_fault = true;
    if (m_fault)
        start = false;
    const double target = start ? 1.0 : 0.0;
    m_speed += (target - m_speed) * (1.0 - std::exp(-seconds / runUpSeconds));
    if (!start && m_speed < 0.01)
        m_speed = 0.0;
}

void Pump::resetFault()
{
    m_fault = false;
}

} // namespace Plant
