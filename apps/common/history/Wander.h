#pragma once

#include <cstdint>

namespace Host::Wander {

/// Chance that depends on nothing but its arguments: the same seed and place give the same number
/// whatever was asked before, so that a history can be made from any moment on.

/// 0 to 1, evenly.
double even(std::uint64_t seed, std::int64_t place);
/// About normal with deviation 1, within 3.5 of 0.
double normal(std::uint64_t seed, std::int64_t place);
/// -1 to 1, changing smoothly; it takes about 1 of `place` from one turn to the next.
double smooth(std::uint64_t seed, double place);
/// Another seed for each purpose.
std::uint64_t mix(std::uint64_t seed, std::uint64_t purpose);

} // namespace Host::Wander
