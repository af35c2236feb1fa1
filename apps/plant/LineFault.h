#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace Plant {

/// What is wrong with the line to the plant; the numbers are what the line-fault register takes.
enum class LineFaultKind { None = 0, Late = 1, Garbage = 2, Truncate = 3, Silent = 4 };

/// Harms answers on their way out. Requests are carried out all the same.
struct LineFault
{
    LineFaultKind kind = LineFaultKind::None;
    std::uint32_t delayMs = 2000; ///< of each answer when kind is Late

    /// The answer as the client gets it; empty when it gets none.
    std::vector<std::uint8_t> harmed(std::vector<std::uint8_t> answer, std::mt19937 &random) const;
    /// Milliseconds before the answer is sent.
    std::uint32_t delay() const { return kind == LineFaultKind::Late ? delayMs : 0; }
};

/// The kind by its name on the command line: none, late, garbage, truncate or silent.
std::optional<LineFaultKind> lineFaultByName(const std::string &name);

} // namespace Plant
