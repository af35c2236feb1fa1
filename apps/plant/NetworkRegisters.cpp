#include "apps/plant/RegisterRows.h"

namespace Plant {

namespace {
using Site = PlantSite;
constexpr auto int16 = RegisterType::Int16;
constexpr auto uint16 = RegisterType::UInt16;
constexpr auto uint32Abcd = RegisterType::UInt32Abcd;
constexpr auto uint32Cdab = RegisterType::UInt32Cdab;
constexpr auto floatAbcd = RegisterType::Float32Abcd;
constexpr auto floatCdab = RegisterType::Float32Cdab;

void addCommonCoils(Rows &rows)
{
    const auto on = [](auto member) {
        return command([member](auto &s) -> auto & {
            return s.house.network().commands().*member;
        });
    };
    const auto onPump = [](std::size_t i) {
        return command([i](auto &s) -> auto & {
            return s.house.network().commands().pumpStart[i];
        });
    };
    const Access stop{[](const Site &s) { return double(s.house.emergencyStop()); },
                      [](Site &s, double value) { s.house.setEmergencyStop(value != 0.0); }};
    using C = NetworkCommands;
    rows.insert(
        rows.end(),
        {
            onCoil("Net.Pump1.Start", 16, "network pump 1 on; cleared by its fault", onPump(0)),
            onCoil("Net.Pump2.Start", 17, "network pump 2 on; cleared by its fault", onPump(1)),
            onCoil("Net.Auto", 18, "1: flow control, 0: manual valve", on(&C::automatic)),
            onCoil("Net.Reset", 19, "pulse: resets faults of the network pumps", on(&C::reset)),
            onCoil("MakeUp.Auto", 20, "1: pressure holding, 0: manual", on(&C::makeUpAutomatic)),
            onCoil("MakeUp.Pump.Start", 21, "make-up pump on; driven by the control in automatic",
                   on(&C::makeUpPumpStart)),
            onCoil("House.EmergencyStop", 22, "trips both burners while set", stop),
            onCoil("Sim.Leak", 23, "simulate a burst pipe in the network", on(&C::simulateLeak)),
            onCoil("Sim.NetPump1Failure", 24, "simulate failure of network pump 1",
                   on(&C::simulatePump1Failure)),
        });
}

void addCommonStates(Rows &rows)
{
    const auto of = [](auto test) -> Read {
        return [test](const Site &s) { return test(s.house.network()) ? 1.0 : 0.0; };
    };
    using N = HeatNetwork;
    rows.insert(rows.end(),
                {
                    onDiscrete("Net.Pump1.Running", 32, "network pump 1 runs",
                               of([](const N &n) { return n.pump(0).isRunning(); })),
                    onDiscrete("Net.Pump1.Fault", 33, "network pump 1 fault, latched until reset",
                               of([](const N &n) { return n.pump(0).hasFault(); })),
                    onDiscrete("Net.Pump2.Running", 34, "network pump 2 runs",
                               of([](const N &n) { return n.pump(1).isRunning(); })),
                    onDiscrete("Net.Pump2.Fault", 35, "network pump 2 fault, latched until reset",
                               of([](const N &n) { return n.pump(1).hasFault(); })),
                    onDiscrete("MakeUp.Pump.Running", 36, "make-up pump runs",
                               of([](const N &n) { return n.makeUpPump().isRunning(); })),
                    onDiscrete("Net.Valve.Opened", 37, "network valve at the open limit",
                               of([](const N &n) { return n.valve().isOpen(); })),
                    onDiscrete("Net.Valve.Closed", 38, "network valve at the closed limit",
                               of([](const N &n) { return n.valve().isClosed(); })),
                    onDiscrete("Net.LowPressure", 39, "return pressure below 0.22 MPa",
                               of([](const N &n) { return n.hasLowPressure(); })),
                    onDiscrete("Net.HighPressure", 40, "return pressure above 0.55 MPa",
                               of([](const N &n) { return n.hasHighPressure(); })),
                    onDiscrete("House.EmergencyStopped", 41, "emergency stop is active",
                               [](const Site &s) { return s.house.emergencyStop() ? 1.0 : 0.0; }),
                    onDiscrete("House.Fault", 42, "any trip or pump fault is latched",
                               [](const Site &s) { return s.house.hasAnyFault() ? 1.0 : 0.0; }),
                });
}

void addCommonSetpoints(Rows &rows)
{
    const auto on = [](auto member) {
        return command([member](auto &s) -> auto & {
            return s.house.network().commands().*member;
        });
    };
    const Access kind{[](const Site &s) { return double(int(s.line.kind)); },
                      [](Site &s, double v) { s.line.kind = LineFaultKind(int(v)); }};
    const Access delay{[](const Site &s) { return double(s.line.delayMs); },
                       [](Site &s, double v) { s.line.delayMs = std::uint32_t(v); }};
    using C = NetworkCommands;
    rows.insert(
        rows.end(),
        {
            onHolding("Net.Flow.Setpoint", 12, floatAbcd, 1.0, "t/h", 0, 400,
                      "network flow set-point", on(&C::flowSetpoint)),
            onHolding("MakeUp.Pressure.Setpoint", 14, floatCdab, 1.0, "MPa", 0.1, 0.6,
                      "return pressure set-point", on(&C::pressureSetpoint)),
            onHolding("Net.Valve.Manual", 16, int16, 0.1, "%", 0, 100,
                      "network valve position in manual", on(&C::manualValve)),
            onHolding("MakeUp.Valve.Manual", 17, int16, 0.1, "%", 0, 100,
                      "make-up valve position in manual", on(&C::makeUpManualValve)),
            onHolding("Sim.OutsideTemp", 18, int16, 0.1, "degC", -45, 35,
                      "mean outside temperature of the simulated day", on(&C::outsideTemperature)),
            onHolding("Line.Fault", 19, uint16, 1.0, "", 0, 4,
                      "0 none, 1 late, 2 garbage, 3 truncate, 4 silent", kind),
            onHolding("Line.Delay", 20, uint16, 1.0, "ms", 0, 60000,
                      "delay of each answer while Line.Fault is 1", delay),
        });
}

void addCommonMeasurements(Rows &rows)
{
    const auto shown = [](auto member) -> Read {
        return [member](const Site &s) { return s.house.network().readings().*member; };
    };
    const auto current = [](std::size_t i) -> Read {
        return [i](const Site &s) { return s.house.network().readings().pumpCurrent[i]; };
    };
    using R = NetworkReadings;
    rows.insert(
        rows.end(),
        {
            onInput("Net.Temp.Supply", 32, int16, 0.1, "degC", "supply header temperature",
                    shown(&R::supplyTemperature)),
            onInput("Net.Temp.Return", 33, int16, 0.1, "degC", "return header temperature",
                    shown(&R::returnTemperature)),
            onInput("Net.Pressure.Supply", 34, int16, 0.001, "MPa", "supply header pressure",
                    shown(&R::supplyPressure)),
            onInput("Net.Pressure.Return", 35, int16, 0.001, "MPa", "return header pressure",
                    shown(&R::returnPressure)),
            onInput("Net.Valve.Position", 36, int16, 0.1, "%", "network valve position",
                    [](const Site &s) { return s.house.network().valve().position() * 100.0; }),
            onInput(
                "MakeUp.Valve.Position", 37, int16, 0.1, "%", "make-up valve position",
                [](const Site &s) { return s.house.network().makeUpValve().position() * 100.0; }),
            onInput("Outside.Temp", 38, int16, 0.1, "degC", "outside temperature",
                    shown(&R::outsideTemperature)),
            onInput("Gas.Pressure", 39, int16, 0.1, "kPa", "gas pressure before the burners",
                    [](const Site &s) { return s.house.gasPressure(); }),
            onInput("Net.Flow", 40, floatAbcd, 1.0, "t/h", "network flow", shown(&R::flow)),
            onInput("Net.Power", 42, floatAbcd, 1.0, "kW", "heat delivered to the network",
                    shown(&R::heatPower)),
            onInput("MakeUp.Flow", 44, floatCdab, 1.0, "t/h", "make-up flow",
                    shown(&R::makeUpFlow)),
            onInput("Gas.Flow", 46, floatCdab, 1.0, "m3/h", "gas flow of the house",
                    [](const Site &s) { return s.house.gasFlow(); }),
            onInput("Net.Energy", 48, uint32Abcd, 1.0, "kWh", "heat delivered, counter",
                    shown(&R::energy)),
            onInput("Gas.Volume", 50, uint32Cdab, 1.0, "m3", "gas burnt, counter",
                    [](const Site &s) { return s.house.gasVolume(); }),
            onInput("House.Uptime", 52, uint32Abcd, 1.0, "s", "plant time since the start",
                    [](const Site &s) { return s.house.uptime(); }),
            onInput("Net.Pump1.Current", 54, int16, 0.1, "A", "motor current of network pump 1",
                    current(0)),
            onInput("Net.Pump2.Current", 55, int16, 0.1, "A", "motor current of network pump 2",
                    current(1)),
        });
}
} // namespace

void addNetworkRows(Rows &rows)
{
    addCommonCoils(rows);
    addCommonStates(rows);
    addCommonSetpoints(rows);
    addCommonMeasurements(rows);
}

} // namespace Plant
