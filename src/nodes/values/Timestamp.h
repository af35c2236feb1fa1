#pragma once

#include <cstdint>

namespace Nodes {

/// Microseconds since 1970-01-01 00:00 UTC; 0 means "no time".
using Timestamp = std::int64_t;

} // namespace Nodes
