#include "apps/plant/Hydraulics.h"

#include "apps/plant/Pump.h"

#include <algorithm>
#include <cmath>

namespace Plant {

namespace {
constexpr double megapascalPerMetre = 0.00981;
constexpr double leastOpening = 0.005;
constexpr double leastSpeed = 0.02;
} // namespace

double lagged(double value, double target, double seconds, double timeConstant)
{
    return value + (target - value) * (1.0 - std::exp(-seconds / timeConstant));
}

double HydraulicCircuit::flow(const Pump &first, const Pump &second, double valvePosition) const
{
    const double total = first.speed() + second.speed();
    if (total < leastSpeed || valvePosition < leastOpening)
        return 0.0;
    const double fastest = std::max(first.speed(), second.speed());
    const double head = shutOffHead * fastest * fastest;
    const double share = total / fastest;
    const double slope = pumpSlope / (share * share) + resistance / (valvePosition * valvePosition);
    return std::sqrt(head / slope);
}

double HydraulicCircuit::pressureRise(const Pump &first, const Pump &second, double flow) const
{
    const double fastest = std::max(first.speed(), second.speed());
    if (fastest < leastSpeed)
        return 0.0;
    const double perPump = flow * fastest / (first.speed() + second.speed());
    const double head = shutOffHead * fastest * fastest - pumpSlope * perPump * perPump;
    return std::max(0.0, head) * megapascalPerMetre;
}

} // namespace Plant
