#pragma once

#include <chrono>
#include <cstddef>

namespace LimeReport {

/// Bounds of one script.
struct ScriptLimits
{
    std::chrono::milliseconds time{1000};
    std::size_t bytes = std::size_t(256) << 20; ///< that the process grows by while it runs
};

} // namespace LimeReport
