#pragma once

#include "nodes/NodesExport.h"

#include <optional>
#include <string>
#include <string_view>

namespace Nodes {

/// Locale-independent number texts of files and values: decimal point, no grouping.

/// Stands where a number would while there is none: long enough to be seen, never to be read as a
/// value.
inline constexpr const char *NoValueText = "----";

/// Whole text as a finite or infinite double; nothing when any character is left over.
NODES_EXPORT std::optional<double> ParseDouble(std::string_view text);
/// Whole text as a decimal integer that fits long long.
NODES_EXPORT std::optional<long long> ParseInteger(std::string_view text);
/// Shortest text that reads back as the same double.
NODES_EXPORT std::string FormatDouble(double value);
/// Fixed number of decimals (0 to 15), rounded half to even; -0.0 is written "0".
NODES_EXPORT std::string FormatFixed(double value, int decimals);
/// Every digit that it has, and so many decimals (0 to 15) at least, for numbers that people
/// compare or type in again: 2000000, never 2e+06. From 10^15 on with an exponent.
NODES_EXPORT std::string FormatExact(double value, int decimals = 0);
/// As operators read a value: of fixed decimals, but from 10^15 on, which no device means, with an
/// exponent
/// ("1e+38") instead of hundreds of digits.
NODES_EXPORT std::string FormatShown(double value, int decimals);

} // namespace Nodes
