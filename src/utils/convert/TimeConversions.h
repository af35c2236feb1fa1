#pragma once

#include "utils/UtilsExport.h"

#include "nodes/values/Timestamp.h"

#include <QDateTime>

namespace Utils {

/// Formats of times shown to operators.
constexpr const char *tableTimeFormat = "dd.MM.yyyy hh:mm:ss.zzz";
constexpr const char *shortTimeFormat = "dd.MM.yyyy hh:mm:ss";

/// Local time of a node timestamp (microseconds, UTC), to the millisecond, rounded down; an
/// invalid date-time for 0, which means "no time".
UTILS_EXPORT QDateTime toLocalTime(Nodes::Timestamp time);
/// Microseconds since the epoch; 0 for an invalid date-time. Any time specification.
UTILS_EXPORT Nodes::Timestamp toTimestamp(const QDateTime &time);

/// Milliseconds since the epoch as trends hold them on the time axis, and back.
UTILS_EXPORT double toAxisTime(Nodes::Timestamp time);
UTILS_EXPORT Nodes::Timestamp fromAxisTime(double milliseconds);

/// Local time as text; a dash for "no time".
UTILS_EXPORT QString timeText(Nodes::Timestamp time, const char *format = shortTimeFormat);

} // namespace Utils
