#include "apps/plant/BoilerHouse.h"

#include <cmath>

namespace Plant {

namespace {
constexpr double stepSeconds = 0.1;
// Rounding of many small steps must not cost a step: the last one counts when nearly due.
constexpr double stepTolerance = 1e-6;
constexpr double coldWater = 45.0;
constexpr double gasSupplyPressure = 25.0;
constexpr double gasPressureDrop = 0.0025; // kPa per m3/h

double gasPressureAt(double flow)
{
    return gasSupplyPressure - gasPressureDrop * flow;
}
} // namespace

BoilerHouse::BoilerHouse(std::uint32_t seed)
    : m_boilers{Boiler(coldWater), Boiler(coldWater)},
      m_network(coldWater),
      m_noise(seed),
      m_gasPressure(gasPressureAt(0.0))
{
    stepOnce();
    m_uptime = 0.0;
}

void BoilerHouse::step(double seconds)
{
    if (!std::isfinite(seconds) || seconds <= 0.0)
        return;
    m_pending += seconds;
    while (m_pending >= stepSeconds - stepTolerance) {
        m_pending -= stepSeconds;
        stepOnce();
    }
}

void BoilerHouse::startAll()
{
    for (Boiler &boiler : m_boilers) {
        boiler.commands().pumpStart[0] = true;
        boiler.commands().automatic = true;
        boiler.commands().burnerStart = true;
    }
    m_network.commands().pumpStart[0] = true;
    m_network.commands().automatic = true;
    m_network.commands().makeUpAutomatic = true;
}

double BoilerHouse::gasFlow() const
{
    double total = 0.0;
    for (const Boiler &boiler : m_boilers)
        total += boiler.gasFlow();
    return total;
}

bool BoilerHouse::hasAnyFault() const
{
    bool fault = m_network.makeUpPump().hasFault();
    for (std::size_t i = 0; i < boilerCount; ++i) {
        fault = fault || m_network.pump(i).hasFault();
        fault = fault || m_boilers[i].burner().state() == BurnerState::Tripped;
        fault = fault || m_boilers[i].pump(0).hasFault() || m_boilers[i].pump(1).hasFault();
    }
    return fault;
}

void BoilerHouse::stepOnce()
{
    const double inlet = m_network.boilerInlet(boilerFlow(), boilerTemperature());
    for (Boiler &boiler : m_boilers)
        boiler.step(stepSeconds, inlet, m_network.returnPressure(), m_emergencyStop, m_noise);
    m_network.step(stepSeconds, boilerFlow(), boilerTemperature(), m_noise);
    m_gasVolume += gasFlow() * stepSeconds / 3600.0;
    m_gasPressure = m_noise.on(gasPressureAt(gasFlow()), 0.02);
    m_uptime += stepSeconds;
}

double BoilerHouse::boilerFlow() const
{
    double total = 0.0;
    for (const Boiler &boiler : m_boilers)
        total += boiler.flow();
    return total;
}

double BoilerHouse::boilerTemperature() const
{
    const double flow = boilerFlow();
    if (flow <= 0.0)
        return m_boilers[0].temperature();
    double heat = 0.0;
    for (const Boiler &boiler : m_boilers)
        heat += boiler.flow() * boiler.temperature();
    return heat / flow;
}

} // namespace Plant
