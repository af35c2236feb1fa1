#include "apps/common/process/SpanText.h"

#include <charconv>

namespace Host {

namespace {

using Nodes::Timestamp;

constexpr Timestamp second = 1000000;
constexpr Timestamp day = 86400 * second;
constexpr Timestamp longest = 100 * 365 * day;

/// 0 for a letter that is no unit.
Timestamp unitOf(char letter)
{
    switch (letter) {
    case 's':
        return second;
    case 'm':
        return 60 * second;
    case 'h':
        return 3600 * second;
    case 'd':
        return day;
    case 'w':
        return 7 * day;
    case 'y':
        return 365 * day;
    default:
        return 0;
    }
}

} // namespace

std::optional<Timestamp> parseSpan(std::string_view text)
{
    Timestamp span = 0;
    while (!text.empty()) {
        unsigned count = 0;
        const char *end = text.data() + text.size();
        const auto [unit, error] = std::from_chars(text.data(), end, count);
        if (error != std::errc() || unit == end)
            return std::nullopt;
        const Timestamp length = unitOf(*unit);
        if (length == 0 || Timestamp(count) > (longest - span) / length)
            return std::nullopt;
        span += Timestamp(count) * length;
        text.remove_prefix(std::size_t(unit + 1 - text.data()));
    }
    return span > 0 ? std::optional(span) : std::nullopt;
}

std::string spanAdvice(std::string_view text)
{
    return "\"" + std::string(text) +
           "\" is no span of time: give numbers with s, m, h, d, w or y, like 12h, 30d or 1d12h, "
           "100 years at most";
}

} // namespace Host
