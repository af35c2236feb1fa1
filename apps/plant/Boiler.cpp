#include "apps/plant/Boiler.h"

#include "apps/plant/Hydraulics.h"
#include "apps/plant/Noise.h"

#include <algorithm>

namespace Plant {

namespace {
constexpr HydraulicCircuit circuit{30.0, 0.0008, 0.0022};
constexpr double ratedPower = 5000.0;       // kW
constexpr double heatCapacity = 23000.0;    // kJ/K of water and steel
constexpr double lossPerKelvin = 0.8;       // kW/K to the boiler room
constexpr double roomTemperature = 20.0;    // degC
constexpr double leastLoad = 0.2;           // turn-down of the burner
constexpr double ratedGasFlow = 590.0;      // m3/h
constexpr double airOxygen = 20.9;          // %
constexpr double highTemperatureMargin = 8; // K below the trip
constexpr double lowFlowWarning = 40.0;     // t/h
} // namespace

Boiler::Boiler(double waterTemperature)
    : m_valve(30.0, 1.0),
      m_fuelValve(20.0),
      m_control(0.03, 120.0),
      m_temperature(waterTemperature),
      m_flueGas(waterTemperature),
      m_oxygen(airOxygen)
{
}

void Boiler::step(double seconds, double inlet, double suction, bool emergencyStop, Noise &noise)
{
    stepPumps(seconds, suction);
    stepBurner(seconds, emergencyStop);
    stepHeat(seconds, inlet);
    measure(inlet, noise);
}

double Boiler::gasFlow() const
{
    return m_burner.hasFlame() ? ratedGasFlow * m_fuelValve.position() : 0.0;
}

bool Boiler::isReady() const
{
    return m_burner.state() != BurnerState::Tripped && m_flow >= Burner::lowFlowLimit;
}

bool Boiler::hasHighTemperatureWarning() const
{
    return m_temperature > m_commands.tripTemperature - highTemperatureMargin;
}

bool Boiler::hasLowFlowWarning() const
{
    const bool wanted = m_commands.pumpStart[0] || m_commands.pumpStart[1] || m_burner.isFanOn();
    return wanted && m_flow < lowFlowWarning;
}

BurnerInputs Boiler::burnerInputs(bool emergencyStop) const
{
    BurnerInputs in;
    in.automatic = m_commands.automatic;
    in.flameLoss = m_commands.simulateFlameLoss;
    in.emergencyStop = emergencyStop;
    in.temperature = m_temperature;
    in.setpoint = m_commands.temperatureSetpoint;
    in.tripTemperature = m_commands.tripTemperature;
    in.flow = m_flow;
    in.pressure = m_pressure;
    in.suction = m_suction;
    return in;
}

void Boiler::stepPumps(double seconds, double suction)
{
    for (std::size_t i = 0; i < m_pumps.size(); ++i) {
        if (m_commands.reset)
            m_pumps[i].resetFault();
        m_pumps[i].step(seconds, m_commands.pumpStart[i], m_commands.simulatePumpFailure[i]);
    }
    m_valve.step(seconds, m_commands.valveSetpoint / 100.0);
    const double steady = circuit.flow(m_pumps[0], m_pumps[1], m_valve.position());
    m_flow = lagged(m_flow, steady, seconds, 1.5);
    m_suction = suction;
    m_pressure = suction + circuit.pressureRise(m_pumps[0], m_pumps[1], m_flow);
}

void Boiler::stepBurner(double seconds, bool emergencyStop)
{
    const BurnerInputs in = burnerInputs(emergencyStop);
    if (m_commands.reset)
        m_burner.reset(in);
    m_commands.reset = false;
    m_burner.step(seconds, m_commands.burnerStart, in);
    if (!m_burner.hasFlame()) {
        m_fuelValve.slamShut();
        m_control.track(leastLoad);
        return;
    }
    const double high = std::max(leastLoad, m_commands.maxPower / 100.0);
    double load = std::clamp(m_commands.manualPower / 100.0, leastLoad, high);
    if (m_commands.automatic)
        load = m_control.step(seconds, in.setpoint - m_temperature, leastLoad, high);
    else
        m_control.track(m_fuelValve.position());
    m_fuelValve.step(seconds, load);
    m_burnerSeconds += seconds;
}

void Boiler::stepHeat(double seconds, double inlet)
{
    const double load = m_burner.hasFlame() ? m_fuelValve.position() : 0.0;
    const double burnt = ratedPower * load;
    const double taken = capacityFlow(m_flow) * (m_temperature - inlet);
    const double lost = lossPerKelvin * (m_temperature - roomTemperature);
    m_temperature += (burnt - taken - lost) * seconds / heatCapacity;

    const double flue = load > 0.0 ? m_temperature + 35.0 + 55.0 * load : m_temperature;
    m_flueGas = lagged(m_flueGas, flue, seconds, 25.0);
    const double oxygen = load > 0.0 ? 3.0 + 2.5 * (1.0 - load) : airOxygen;
    m_oxygen = lagged(m_oxygen, oxygen, seconds, 8.0);
}

void Boiler::measure(double inlet, Noise &noise)
{
    m_readings.outletTemperature = noise.on(m_temperature, 0.05);
    m_readings.inletTemperature = noise.on(inlet, 0.05);
    m_readings.flueGasTemperature = noise.on(m_flueGas, 0.3);
    m_readings.oxygen = noise.on(m_oxygen, 0.03);
    m_readings.pressure = noise.on(m_pressure, 0.0005);
    m_readings.flow = std::max(0.0, noise.on(m_flow, m_flow * 0.002));
    m_readings.heatPower = capacityFlow(m_flow) * (m_temperature - inlet);
    m_readings.gasFlow = gasFlow();
    m_readings.burnerSeconds = m_burnerSeconds;
}

} // namespace Plant
