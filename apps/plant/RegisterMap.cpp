#include "apps/plant/RegisterMap.h"

#include <algorithm>

namespace Plant {

namespace {
using Site = PlantSite;
using Rows = std::vector<RegisterEntry>;
using Read = std::function<double(const Site &)>;
using Write = std::function<void(Site &, double)>;

constexpr auto coil = RegisterTable::Coil;
constexpr auto discrete = RegisterTable::DiscreteInput;
constexpr auto holding = RegisterTable::Holding;
constexpr auto input = RegisterTable::Input;
constexpr auto bit = RegisterType::Bit;
constexpr auto int16 = RegisterType::Int16;
constexpr auto uint16 = RegisterType::UInt16;
constexpr auto uint32Abcd = RegisterType::UInt32Abcd;
constexpr auto uint32Cdab = RegisterType::UInt32Cdab;
constexpr auto floatAbcd = RegisterType::Float32Abcd;
constexpr auto floatCdab = RegisterType::Float32Cdab;

/// A value the operator writes: how to reach it for reading and for writing.
struct Access
{
    Read read;
    Write write;
};

// @p reach returns a reference to the command in a site, const or not alike.
template <typename Reach> Access command(Reach reach)
{
    return {[reach](const Site &site) { return static_cast<double>(reach(site)); },
            [reach](Site &site, double value) {
                auto &target = reach(site);
                target = static_cast<std::decay_t<decltype(target)>>(value);
            }};
}

RegisterEntry onCoil(std::string name, int address, std::string description, Access access)
{
    return {std::move(name),
            coil,
            address,
            bit,
            1.0,
            "",
            0.0,
            1.0,
            std::move(description),
            std::move(access.read),
            std::move(access.write)};
}

RegisterEntry onDiscrete(std::string name, int address, std::string description, Read read)
{
    return {std::move(name),        discrete,        address, bit, 1.0, "", 0.0, 1.0,
            std::move(description), std::move(read), {}};
}

RegisterEntry onHolding(std::string name, int address, RegisterType type, double scale,
                        std::string unit, double low, double high, std::string description,
                        Access access)
{
    return {std::move(name),
            holding,
            address,
            type,
            scale,
            std::move(unit),
            low,
            high,
            std::move(description),
            std::move(access.read),
            std::move(access.write)};
}

RegisterEntry onInput(std::string name, int address, RegisterType type, double scale,
                      std::string unit, std::string description, Read read)
{
    return {
        std::move(name),        input,           address, type, scale, std::move(unit), 0.0, 0.0,
        std::move(description), std::move(read), {}};
}

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

Rows build()
{
    Rows rows;
    for (std::size_t n = 0; n < BoilerHouse::boilerCount; ++n) {
        const std::string prefix = "K" + std::to_string(n + 1) + ".";
        addBoilerCoils(rows, n, prefix);
        addBoilerStates(rows, n, prefix);
        addBoilerSetpoints(rows, n, prefix);
        addBoilerMeasurements(rows, n, prefix);
    }
    addCommonCoils(rows);
    addCommonStates(rows);
    addCommonSetpoints(rows);
    addCommonMeasurements(rows);
    return rows;
}
} // namespace

const std::vector<RegisterEntry> &registerMap()
{
    static const Rows rows = build();
    return rows;
}

const RegisterEntry *findRegister(const std::string &name)
{
    const Rows &rows = registerMap();
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&name](const RegisterEntry &row) { return row.name == name; });
    return found == rows.end() ? nullptr : &*found;
}

int tableSize(RegisterTable table)
{
    int size = 0;
    for (const RegisterEntry &row : registerMap()) {
        if (row.table == table)
            size = std::max(size, row.address + row.width());
    }
    return size;
}

} // namespace Plant
