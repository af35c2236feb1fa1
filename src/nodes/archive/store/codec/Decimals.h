#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

/// Numbers that are decimal fractions, as measured ones mostly are, as integers: k / 10^places.
namespace Nodes::Decimals {

constexpr unsigned MostPlaces = 9;
constexpr std::array<double, MostPlaces + 1> Powers{1e0, 1e1, 1e2, 1e3, 1e4,
                                                    1e5, 1e6, 1e7, 1e8, 1e9};

/// The fewest decimal places with which each number is an integer below 2^53 divided by a power of
/// ten, exactly. The integers go to `scaled`. Nothing when some number is none. Numbers are finite.
std::optional<unsigned> Scale(const std::vector<double> &numbers,
                              std::vector<std::int64_t> &scaled);

} // namespace Nodes::Decimals
