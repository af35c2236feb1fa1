#include "apps/plant/HeatNetwork.h"

#include "apps/plant/Hydraulics.h"
#include "apps/plant/Noise.h"

#include <algorithm>
#include <cmath>

namespace Plant {

namespace {
constexpr HydraulicCircuit circuit{60.0, 0.0003, 0.00074};
constexpr double indoorTemperature = 20.0;
constexpr double designOutside = -20.0;       // degC at which consumerTransfer applies
constexpr double consumerTransfer = 139.0;    // kW/K at design weather
constexpr double makeUpRatedFlow = 15.0;      // t/h
constexpr double normalLeak = 0.3;            // t/h at the nominal pressure
constexpr double simulatedLeak = 35.0;        // t/h at the nominal pressure
constexpr double nominalPressure = 0.35;      // MPa
constexpr double tonsPerMegapascal = 4.0;     // stiffness of the expansion vessel
constexpr double expansionPerKelvin = 0.0008; // MPa/K
constexpr double reliefPressure = 0.6;        // MPa
constexpr double neutralTemperature = 60.0;   // degC
constexpr double lowPressureLimit = 0.22;     // MPa
constexpr double highPressureLimit = 0.55;    // MPa
constexpr double drySuction = 0.05;           // MPa, below it the pumps run dry
constexpr double daySwing = 4.0;              // K
constexpr double secondsPerDay = 86400.0;
constexpr double fullTurn = 6.283185307179586;
constexpr double leastFlow = 0.5; // t/h, below it no heat is carried
} // namespace

HeatNetwork::HeatNetwork(double waterTemperature)
    : m_valve(30.0),
      m_makeUpValve(15.0),
      m_flowControl(0.002, 12.0),
      m_makeUpControl(20.0, 60.0),
      m_supplyTemperature(waterTemperature),
      m_consumerTemperature(waterTemperature),
      m_returnTemperature(waterTemperature)
{
}

void HeatNetwork::step(double seconds, double boilerFlow, double boilerTemperature, Noise &noise)
{
    stepWeather(seconds);
    stepPumps(seconds);
    stepMakeUp(seconds);
    stepHeat(seconds, boilerFlow, boilerTemperature);
    measure(noise);
}

double HeatNetwork::boilerInlet(double boilerFlow, double boilerTemperature) const
{
    if (boilerFlow <= m_flow)
        return m_returnTemperature;
    const double excess = boilerFlow - m_flow;
    return (m_flow * m_returnTemperature + excess * boilerTemperature) / boilerFlow;
}

bool HeatNetwork::hasLowPressure() const
{
    return m_returnPressure < lowPressureLimit;
}

bool HeatNetwork::hasHighPressure() const
{
    return m_returnPressure > highPressureLimit;
}

void HeatNetwork::stepWeather(double seconds)
{
    m_daySeconds = std::fmod(m_daySeconds + seconds, secondsPerDay);
    const double swing = daySwing * std::sin(fullTurn * m_daySeconds / secondsPerDay);
    m_outside = lagged(m_outside, m_commands.outsideTemperature + swing, seconds, 30.0);
}

void HeatNetwork::stepPumps(double seconds)
{
    const bool dry = m_returnPressure < drySuction;
    if (m_commands.reset) {
        for (Pump &pump : m_pumps)
            pump.resetFault();
        m_makeUpPump.resetFault();
    }
    m_commands.reset = false;
    m_pumps[0].step(seconds, m_commands.pumpStart[0], dry || m_commands.simulatePump1Failure);
    m_pumps[1].step(seconds, m_commands.pumpStart[1], dry);

    double target = m_commands.manualValve / 100.0;
    if (!m_commands.automatic)
        m_flowControl.track(m_valve.position());
    else if (m_pumps[0].isRunning() || m_pumps[1].isRunning())
        target = m_flowControl.step(seconds, m_commands.flowSetpoint - m_flow, 0.0, 1.0);
    else
        target = m_valve.position();
    m_valve.step(seconds, target);
    m_flow = lagged(m_flow, circuit.flow(m_pumps[0], m_pumps[1], m_valve.position()), seconds, 2.0);
}

void HeatNetwork::stepMakeUp(double seconds)
{
    double target = m_commands.makeUpManualValve / 100.0;
    if (m_commands.makeUpAutomatic) {
        const double error = m_commands.pressureSetpoint - m_returnPressure;
        target = m_makeUpControl.step(seconds, error, 0.0, 1.0);
        m_commands.makeUpPumpStart = target > (m_makeUpPump.isRunning() ? 0.0 : 0.02);
    } else {
        m_makeUpControl.track(m_makeUpValve.position());
    }
    m_makeUpPump.step(seconds, m_commands.makeUpPumpStart, false);
    m_makeUpValve.step(seconds, target);

    m_makeUpFlow = makeUpRatedFlow * m_makeUpPump.speed() * m_makeUpValve.position();
    const double leak = m_commands.simulateLeak ? simulatedLeak : normalLeak;
    const double lost = leak * std::sqrt(m_returnPressure / nominalPressure);
    m_inventoryPressure += (m_makeUpFlow - lost) * seconds / 3600.0 / tonsPerMegapascal;
    const double mean = (m_supplyTemperature + m_returnTemperature) / 2.0;
    const double expansion = expansionPerKelvin * (mean - neutralTemperature);
    // The relief valve spills whatever would lift the pressure over its setting.
    m_inventoryPressure = std::clamp(m_inventoryPressure, -expansion, reliefPressure - expansion);
    m_returnPressure = std::max(0.0, m_inventoryPressure + expansion);
}

void HeatNetwork::stepHeat(double seconds, double boilerFlow, double boilerTemperature)
{
    const double weather = std::clamp(
        (indoorTemperature - m_outside) / (indoorTemperature - designOutside), 0.05, 1.5);
    const double transfer = consumerTransfer * weather;
    const double carried = capacityFlow(m_flow);
    m_heatPower = 0.0;
    if (m_flow > leastFlow) {
        const double fromBoilers = std::min(boilerFlow, m_flow);
        const double mixed =
            (fromBoilers * boilerTemperature + (m_flow - fromBoilers) * m_returnTemperature) /
            m_flow;
        m_supplyTemperature = lagged(m_supplyTemperature, mixed, seconds, 10.0);
        m_consumerTemperature = lagged(m_consumerTemperature, m_supplyTemperature, seconds, 60.0);
        const double drawn = transfer * (m_consumerTemperature - indoorTemperature) /
                             (1.0 + transfer / (2.0 * carried));
        const double back = m_consumerTemperature - drawn / carried;
        m_returnTemperature = lagged(m_returnTemperature, back, seconds, 120.0);
        m_heatPower = std::max(0.0, carried * (m_supplyTemperature - m_returnTemperature));
    }
    m_energy += m_heatPower * seconds / 3600.0;
}

void HeatNetwork::measure(Noise &noise)
{
    const double rise = circuit.pressureRise(m_pumps[0], m_pumps[1], m_flow);
    m_readings.supplyTemperature = noise.on(m_supplyTemperature, 0.05);
    m_readings.returnTemperature = noise.on(m_returnTemperature, 0.05);
    m_readings.supplyPressure = noise.on(m_returnPressure + rise, 0.0005);
    m_readings.returnPressure = noise.on(m_returnPressure, 0.0005);
    m_readings.flow = std::max(0.0, noise.on(m_flow, m_flow * 0.002));
    m_readings.heatPower = m_heatPower;
    m_readings.makeUpFlow = m_makeUpFlow;
    m_readings.outsideTemperature = noise.on(m_outside, 0.05);
    m_readings.energy = m_energy;
    const double total = std::max(0.01, m_pumps[0].speed() + m_pumps[1].speed());
    for (std::size_t i = 0; i < m_pumps.size(); ++i) {
        const double speed = m_pumps[i].speed();
        const double load = 35.0 + 0.18 * m_flow * speed / total;
        m_readings.pumpCurrent[i] = speed > 0.0 ? noise.on(load * speed, 0.2) : 0.0;
    }
}

} // namespace Plant
