#include "apps/plant/RegisterRows.h"

namespace Plant {

namespace {
using Site = PlantSite;
constexpr auto int16 = RegisterType::Int16;
constexpr auto uint16 = RegisterType::UInt16;
constexpr auto uint32Abcd = RegisterType::UInt32Abcd;
constexpr auto floatAbcd = RegisterType::Float32Abcd;
constexpr auto floatCdab = RegisterType::Float32Cdab;

void addBoilerCoils(Rows &rows, std::size_t n, const std::string &k)
{
    const int a = static_cast<int>(n) * 8;
    const auto on = [n](auto member) {
        return command(
            [ n, member ](auto &s) -> auto & { return s.house.boiler(n).commands().*member; });
    };
    const auto onPump = [n](auto member, std::size_t i) {
        return command([ n, member, i ](auto &s) -> auto & {
            return (s.house.boiler(n).commands().*member)[i];
        });
    };
    using C = BoilerCommands;
    rows.insert(
        rows.end(),
        {
            onCoil(k + "Burner.Start", a, "burner on; cleared by a trip", on(&C::burnerStart)),
            onCoil(k + "Auto", a + 1, "1: temperature control, 0: manual power", on(&C::automatic)),
            onCoil(k + "Reset", a + 2, "pulse: resets the trip and pump faults", on(&C::reset)),
            onCoil(k + "Pump1.Start", a + 3, "pump 1 on; cleared by its fault",
                   onPump(&C::pumpStart, 0)),
            onCoil(k + "Pump2.Start", a + 4, "pump 2 on; cleared by its fault",
                   onPump(&C::pumpStart, 1)),
            onCoil(k + "Sim.FlameLoss", a + 5, "simulate loss of flame", on(&C::simulateFlameLoss)),
            onCoil(k + "Sim.Pump1Failure", a + 6, "simulate failure of pump 1",
                   onPump(&C::simulatePumpFailure, 0)),
            onCoil(k + "Sim.Pump2Failure", a + 7, "simulate failure of pump 2",
                   onPump(&C::simulatePumpFailure, 1)),
        });
}

void addBoilerStates(Rows &rows, std::size_t n, const std::string &k)
{
    const int a = static_cast<int>(n) * 16;
    const auto of = [n](auto test) -> Read {
        return [n, test](const Site &s) { return test(s.house.boiler(n)) ? 1.0 : 0.0; };
    };
    const auto trippedBy = [&of](TripCause cause) {
        return of([cause](const Boiler &b) { return b.burner().cause() == cause; });
    };
    const auto tripped = [](const Boiler &b) { return b.burner().state() == BurnerState::Tripped; };
    rows.insert(
        rows.end(),
        {
            onDiscrete(k + "Burner.Flame", a, "flame is burning",
                       of([](const Boiler &b) { return b.burner().hasFlame(); })),
            onDiscrete(k + "Ready", a + 1, "no trip and enough flow to start",
                       of([](const Boiler &b) { return b.isReady(); })),
            onDiscrete(k + "Tripped", a + 2, "burner trip, latched until reset", of(tripped)),
            onDiscrete(k + "Trip.HighTemp", a + 3, "tripped by outlet over-temperature, latched",
                       trippedBy(TripCause::HighTemperature)),
            onDiscrete(k + "Trip.LowFlow", a + 4, "tripped by low water flow, latched",
                       trippedBy(TripCause::LowFlow)),
            onDiscrete(k + "Trip.HighPressure", a + 5, "tripped by high pressure, latched",
                       trippedBy(TripCause::HighPressure)),
            onDiscrete(k + "Trip.LowPressure", a + 6, "tripped by low pressure, latched",
                       trippedBy(TripCause::LowPressure)),
            onDiscrete(k + "Trip.FlameLoss", a + 7, "tripped by loss of flame, latched",
                       trippedBy(TripCause::FlameLoss)),
            onDiscrete(k + "Warn.HighTemp", a + 8, "outlet within 8 K of the trip",
                       of([](const Boiler &b) { return b.hasHighTemperatureWarning(); })),
            onDiscrete(k + "Warn.LowFlow", a + 9, "flow below 40 t/h while it is needed",
                       of([](const Boiler &b) { return b.hasLowFlowWarning(); })),
            onDiscrete(k + "Pump1.Running", a + 10, "pump 1 runs",
                       of([](const Boiler &b) { return b.pump(0).isRunning(); })),
            onDiscrete(k + "Pump1.Fault", a + 11, "pump 1 fault, latched until reset",
                       of([](const Boiler &b) { return b.pump(0).hasFault(); })),
            onDiscrete(k + "Pump2.Running", a + 12, "pump 2 runs",
                       of([](const Boiler &b) { return b.pump(1).isRunning(); })),
            onDiscrete(k + "Pump2.Fault", a + 13, "pump 2 fault, latched until reset",
                       of([](const Boiler &b) { return b.pump(1).hasFault(); })),
            onDiscrete(k + "Valve.Opened", a + 14, "outlet valve at the open limit",
                       of([](const Boiler &b) { return b.valve().isOpen(); })),
            onDiscrete(k + "Valve.Closed", a + 15, "outlet valve at the closed limit",
                       of([](const Boiler &b) { return b.valve().isClosed(); })),
        });
}

void addBoilerSetpoints(Rows &rows, std::size_t n, const std::string &k)
{
    const int a = static_cast<int>(n) * 6;
    const auto on = [n](auto member) {
        return command(
            [ n, member ](auto &s) -> auto & { return s.house.boiler(n).commands().*member; });
    };
    using C = BoilerCommands;
    rows.insert(rows.end(),
                {
                    onHolding(k + "Temp.Setpoint", a, int16, 0.1, "degC", 30, 115,
                              "outlet temperature set-point", on(&C::temperatureSetpoint)),
                    onHolding(k + "Power.Manual", a + 1, int16, 0.1, "%", 0, 100,
                              "burner power in manual, at least 20 % burns", on(&C::manualPower)),
                    onHolding(k + "Valve.Setpoint", a + 2, int16, 0.1, "%", 0, 100,
                              "outlet valve position wanted", on(&C::valveSetpoint)),
                    onHolding(k + "Power.Max", a + 3, int16, 0.1, "%", 20, 100,
                              "upper limit of burner power", on(&C::maxPower)),
                    onHolding(k + "Trip.Temp", a + 4, floatAbcd, 1.0, "degC", 60, 125,
                              "outlet temperature that trips", on(&C::tripTemperature)),
                });
}

void addBoilerMeasurements(Rows &rows, std::size_t n, const std::string &k)
{
    const int a = static_cast<int>(n) * 16;
    const auto shown = [n](auto member) -> Read {
        return [n, member](const Site &s) { return s.house.boiler(n).readings().*member; };
    };
    const auto of = [n](auto value) -> Read {
        return [n, value](const Site &s) { return value(s.house.boiler(n)); };
    };
    using R = BoilerReadings;
    rows.insert(
        rows.end(),
        {
            onInput(k + "Temp.Outlet", a, int16, 0.1, "degC", "outlet water temperature",
                    shown(&R::outletTemperature)),
            onInput(k + "Temp.Inlet", a + 1, int16, 0.1, "degC", "inlet water temperature",
                    shown(&R::inletTemperature)),
            onInput(k + "Temp.FlueGas", a + 2, int16, 0.1, "degC", "flue gas temperature",
                    shown(&R::flueGasTemperature)),
            onInput(k + "O2", a + 3, int16, 0.01, "%", "oxygen in the flue gas", shown(&R::oxygen)),
            onInput(k + "Pressure", a + 4, int16, 0.001, "MPa", "water pressure in the boiler",
                    shown(&R::pressure)),
            onInput(k + "Flow", a + 5, int16, 0.1, "t/h", "water flow", shown(&R::flow)),
            onInput(k + "FuelValve.Position", a + 6, int16, 0.1, "%", "fuel valve position",
                    of([](const Boiler &b) { return b.fuelValve().position() * 100.0; })),
            onInput(k + "Valve.Position", a + 7, int16, 0.1, "%", "outlet valve position",
                    of([](const Boiler &b) { return b.valve().position() * 100.0; })),
            onInput(k + "Burner.State", a + 8, uint16, 1.0, "",
                    "0 stopped, 1 purge, 2 ignition, 3 running, 4 standby, 5 tripped",
                    of([](const Boiler &b) { return double(int(b.burner().state())); })),
            onInput(k + "Trip.Cause", a + 9, uint16, 1.0, "",
                    "0 none, 1 temperature, 2 flow, 3 high pressure, 4 low pressure, 5 flame, "
                    "6 emergency stop",
                    of([](const Boiler &b) { return double(int(b.burner().cause())); })),
            onInput(k + "Power", a + 10, floatAbcd, 1.0, "kW", "heat taken up by the water",
                    shown(&R::heatPower)),
            onInput(k + "Gas.Flow", a + 12, floatCdab, 1.0, "m3/h", "fuel gas flow",
                    shown(&R::gasFlow)),
            onInput(k + "Burner.RunTime", a + 14, uint32Abcd, 1.0, "s", "time with flame",
                    shown(&R::burnerSeconds)),
        });
}
} // namespace

void addBoilerRows(Rows &rows, std::size_t index)
{
    const std::string prefix = "K" + std::to_string(index + 1) + ".";
    addBoilerCoils(rows, index, prefix);
    addBoilerStates(rows, index, prefix);
    addBoilerSetpoints(rows, index, prefix);
    addBoilerMeasurements(rows, index, prefix);
}

} // namespace Plant
