#pragma once

#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <string>
#include <string_view>

namespace Records {

/// Moments as the tables of this program have them: ISO 8601.
namespace TimeText {

/// "2026-11-22T09:00:00.000000Z".
std::string format(Nodes::Timestamp time);

enum class Zone {
    Told,  ///< the text has to tell its offset from UTC: Z, +03:00, +0300, +03
    OrUtc, ///< a text that does not is UTC, and a date alone is its first moment
};

/// From 1970 to 9999; none to nine decimals of a second, of which those beyond the microsecond are
/// zeros. ParseError says what is wrong and what to write instead.
[[nodiscard]] Nodes::Result parse(std::string_view text, Zone zone, Nodes::Timestamp &time);

} // namespace TimeText

} // namespace Records
