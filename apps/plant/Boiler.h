#pragma once

#include "apps/plant/Burner.h"
#include "apps/plant/PiController.h"
#include "apps/plant/Pump.h"
#include "apps/plant/Valve.h"

#include <array>

namespace Plant {

class Noise;

/// What the operator commands on one boiler. Percent values are 0..100.
struct BoilerCommands
{
    bool burnerStart = false;
    bool automatic = true; ///< the burner follows the temperature set-point, not manualPower
    bool reset = false;    ///< a pulse: the next step takes and clears it
    std::array<bool, 2> pumpStart{};
    bool simulateFlameLoss = false;
    std::array<bool, 2> simulatePumpFailure{};
    double temperatureSetpoint = 95.0; ///< degC at the boiler outlet
    double manualPower = 30.0;         ///< %
    double valveSetpoint = 100.0;      ///< %
    double maxPower = 100.0;           ///< %
    double tripTemperature = 120.0;    ///< degC
};

/// What the instruments of one boiler show, noise included.
struct BoilerReadings
{
    double outletTemperature = 0.0;  ///< degC
    double inletTemperature = 0.0;   ///< degC
    double flueGasTemperature = 0.0; ///< degC
    double oxygen = 0.0;             ///< % in the flue gas
    double pressure = 0.0;           ///< MPa
    double flow = 0.0;               ///< t/h
    double heatPower = 0.0;          ///< kW taken up by the water
    double gasFlow = 0.0;            ///< m3/h
    double burnerSeconds = 0.0;      ///< s with flame since the start
};

/// Hot-water boiler of 5 MW with a gas burner, two circulation pumps and an outlet valve.
class Boiler
{
public:
    explicit Boiler(double waterTemperature);

    /// Advances by one short step (0.1 s or so).
    /// @param inlet water temperature at the inlet, degC; @param suction pressure before the
    /// circulation pumps, MPa.
    void step(double seconds, double inlet, double suction, bool emergencyStop, Noise &noise);

    BoilerCommands &commands() { return m_commands; }
    const BoilerCommands &commands() const { return m_commands; }
    const BoilerReadings &readings() const { return m_readings; }
    const Burner &burner() const { return m_burner; }
    const Pump &pump(std::size_t index) const { return m_pumps[index]; }
    const Valve &valve() const { return m_valve; }
    const Valve &fuelValve() const { return m_fuelValve; }

    /// True (noise-free) outlet temperature, degC, and flow, t/h.
    double temperature() const { return m_temperature; }
    double flow() const { return m_flow; }
    double gasFlow() const;

    bool isReady() const;
    bool hasHighTemperatureWarning() const;
    bool hasLowFlowWarning() const;

private:
    BurnerInputs burnerInputs(bool emergencyStop) const;
    void stepPumps(double seconds, double suction);
    void stepBurner(double seconds, bool emergencyStop);
    void stepHeat(double seconds, double inlet);
    void measure(double inlet, Noise &noise);

    BoilerCommands m_commands;
    BoilerReadings m_readings;
    Burner m_burner;
    std::array<Pump, 2> m_pumps;
    Valve m_valve;
    Valve m_fuelValve;
    PiController m_control;
    double m_temperature;
    double m_flueGas;
    double m_oxygen;
    double m_flow = 0.0;
    double m_pressure = 0.0;
    double m_suction = 0.0;
    double m_burnerSeconds = 0.0;
};

} // namespace Plant
