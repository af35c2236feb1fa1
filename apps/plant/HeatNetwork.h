#pragma once

#include "apps/plant/PiController.h"
#include "apps/plant/Pump.h"
#include "apps/plant/Valve.h"

#include <array>

namespace Plant {

class Noise;

/// What the operator commands on the network side. Percent values are 0..100.
struct NetworkCommands
{
    std::array<bool, 2> pumpStart{};
    bool automatic = true; ///< the network valve follows the flow set-point
    bool reset = false;    ///< a pulse: the next step takes and clears it
    bool makeUpAutomatic = true;
    bool makeUpPumpStart = false; ///< in automatic the controller drives it
    bool simulateLeak = false;
    bool simulatePump1Failure = false;
    double flowSetpoint = 180.0;      ///< t/h
    double pressureSetpoint = 0.35;   ///< MPa in the return header
    double manualValve = 50.0;        ///< %
    double makeUpManualValve = 0.0;   ///< %
    double outsideTemperature = -5.0; ///< degC, mean of the simulated day
};

/// What the instruments of the network show, noise included.
struct NetworkReadings
{
    double supplyTemperature = 0.0;      ///< degC
    double returnTemperature = 0.0;      ///< degC
    double supplyPressure = 0.0;         ///< MPa
    double returnPressure = 0.0;         ///< MPa
    double flow = 0.0;                   ///< t/h
    double heatPower = 0.0;              ///< kW
    double makeUpFlow = 0.0;             ///< t/h
    double outsideTemperature = 0.0;     ///< degC
    double energy = 0.0;                 ///< kWh delivered since the start
    std::array<double, 2> pumpCurrent{}; ///< A
};

/// Headers, network pumps, consumers and pressure holding behind a hydraulic separator.
class HeatNetwork
{
public:
    explicit HeatNetwork(double waterTemperature);

    /// Advances by one short step (0.1 s or so).
    /// @param boilerFlow total flow of the boilers, t/h, at @p boilerTemperature, degC.
    void step(double seconds, double boilerFlow, double boilerTemperature, Noise &noise);

    /// Water temperature, degC, the boilers get back from the separator.
    double boilerInlet(double boilerFlow, double boilerTemperature) const;
    /// Static pressure in the return header, MPa.
    double returnPressure() const { return m_returnPressure; }

    NetworkCommands &commands() { return m_commands; }
    const NetworkCommands &commands() const { return m_commands; }
    const NetworkReadings &readings() const { return m_readings; }
    const Pump &pump(std::size_t index) const { return m_pumps[index]; }
    const Pump &makeUpPump() const { return m_makeUpPump; }
    const Valve &valve() const { return m_valve; }
    const Valve &makeUpValve() const { return m_makeUpValve; }
    bool hasLowPressure() const;
    bool hasHighPressure() const;

private:
    void stepPumps(double seconds);
    void stepMakeUp(double seconds);
    void stepHeat(double seconds, double boilerFlow, double boilerTemperature);
    void stepWeather(double seconds);
    void measure(Noise &noise);

    NetworkCommands m_commands;
    NetworkReadings m_readings;
    std::array<Pump, 2> m_pumps;
    Pump m_makeUpPump;
    Valve m_valve;
    Valve m_makeUpValve;
    PiController m_flowControl;
    PiController m_makeUpControl;
    double m_supplyTemperature;
    double m_consumerTemperature;
    double m_returnTemperature;
    double m_flow = 0.0;
    double m_heatPower = 0.0;
    double m_energy = 0.0;
    double m_makeUpFlow = 0.0;
    double m_inventoryPressure = 0.35;
    double m_returnPressure = 0.35;
    double m_outside = -5.0;
    double m_daySeconds = 0.0;
};

} // namespace Plant
