#pragma once

namespace Plant {

class Pump;

/// Specific heat of water, kJ/(kg K).
constexpr double waterHeat = 4.19;

/// Heat capacity flow of water, kW/K, for a flow in t/h.
constexpr double capacityFlow(double tonsPerHour)
{
    return tonsPerHour / 3.6 * waterHeat;
}

/// Moves @p value towards @p target with a first-order lag.
double lagged(double value, double target, double seconds, double timeConstant);

/// A pump pair in parallel against a circuit throttled by one valve.
/// Pump curve: head = shutOffHead - pumpSlope * Q^2; circuit: head = resistance * (Q / x)^2,
/// with head in metres of water, Q in t/h and x the valve position.
struct HydraulicCircuit
{
    double shutOffHead;
    double pumpSlope;
    double resistance;

    /// Steady flow, t/h, for the present pump speeds and valve position (0..1).
    double flow(const Pump &first, const Pump &second, double valvePosition) const;
    /// Pressure rise over the pumps, MPa, at @p flow.
    double pressureRise(const Pump &first, const Pump &second, double flow) const;
};

} // namespace Plant
