#pragma once

#include <cstdint>
#include <random>

namespace Plant {

/// Seeded measurement noise: the same seed gives the same run.
class Noise
{
public:
    explicit Noise(std::uint32_t seed) : m_generator(seed) {}

    /// @p value with normal noise of the standard deviation @p sigma added.
    double on(double value, double sigma) { return value + sigma * m_normal(m_generator); }

private:
    std::mt19937 m_generator;
    std::normal_distribution<double> m_normal;
};

} // namespace Plant
