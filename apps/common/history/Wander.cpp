#include "apps/common/history/Wander.h"

#include <cmath>

namespace Host {

namespace {

/// Spreads every bit of its argument over the result.
std::uint64_t scramble(std::uint64_t bits)
{
    bits += 0x9e3779b97f4a7c15u;
    bits = (bits ^ (bits >> 30)) * 0xbf58476d1ce4e5b9u;
    bits = (bits ^ (bits >> 27)) * 0x94d049bb133111ebu;
    return bits ^ (bits >> 31);
}

std::uint64_t at(std::uint64_t seed, std::int64_t place)
{
    return scramble(seed ^ scramble(std::uint64_t(place)));
}

} // namespace

std::uint64_t Wander::mix(std::uint64_t seed, std::uint64_t purpose)
{
    return at(seed, std::int64_t(purpose));
}

double Wander::even(std::uint64_t seed, std::int64_t place)
{
    return double(at(seed, place) >> 11) * 0x1p-53;
}

// Four pieces of one number, each even: their sum is close enough to normal for a measurement.
double Wander::normal(std::uint64_t seed, std::int64_t place)
{
    constexpr double deviation = 37837.0; // of the sum of four even numbers below 2^16
    const std::uint64_t bits = at(seed, place);
    const auto sum =
        double((bits & 0xffff) + ((bits >> 16) & 0xffff) + ((bits >> 32) & 0xffff) + (bits >> 48));
    return (sum - 2 * 65535.0) / deviation;
}

double Wander::smooth(std::uint64_t seed, double place)
{
    const double floor = std::floor(place);
    const auto left = std::int64_t(floor);
    const double along = place - floor;
    const double weight = along * along * (3 - 2 * along);
    const double from = 2 * even(seed, left) - 1;
    const double to = 2 * even(seed, left + 1) - 1;
    return from + (to - from) * weight;
}

} // namespace Host
