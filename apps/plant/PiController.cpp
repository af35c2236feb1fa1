#include "apps/plant/PiController.h"

#include <algorithm>

namespace Plant {

PiController::PiController(double gain, double integralSeconds)
    : m_gain(gain), m_integralSeconds(integralSeconds)
{
}

double PiController::step(double seconds, double error, double low, double high)
{
    const double proportional = m_gain * error;
    m_integral += proportional * seconds / m_integralSeconds;
    m_integral = std::clamp(m_integral, low, high);
    return std::clamp(proportional + m_integral, low, high);
}

void PiController::track(double output)
{
    m_integral = output;
}

} // namespace Plant
