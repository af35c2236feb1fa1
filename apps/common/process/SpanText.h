#pragma once

#include "nodes/values/Timestamp.h"

#include <optional>
#include <string>
#include <string_view>

namespace Host {

/// Microseconds of a span as command lines give it: numbers with their units, the largest first or
/// not, put together: "90s", "15m", "12h", "30d", "2w", "1y" (365 days), "1d12h". Nothing for
/// anything else, for no span at all and for more than 100 years.
std::optional<Nodes::Timestamp> parseSpan(std::string_view text);

/// What was wrong with it, for who typed it.
std::string spanAdvice(std::string_view text);

} // namespace Host
