#include "apps/records/TimeText.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <optional>

namespace Records {

namespace {

using Nodes::Result;
using Nodes::Timestamp;

constexpr Timestamp second = 1000000;
constexpr int microDigits = 6;
constexpr int mostDigits = 9;

/// Takes what a text is made of from its front. What does not fit leaves it as it is.
class Taker
{
public:
    explicit Taker(std::string_view text) : m_rest(text) {}

    bool isAtEnd() const { return m_rest.empty(); }
    bool take(std::string_view anyOf)
    {
        if (m_rest.empty() || anyOf.find(m_rest.front()) == std::string_view::npos)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    std::optional<int> digits(std::size_t count)
    {
        if (m_rest.size() < count)
            return std::nullopt;
        int number = 0;
        for (const char digit : m_rest.substr(0, count)) {
            if (digit < '0' || digit > '9')
                return std::nullopt;
            number = number * 10 + (digit - '0');
        }
        m_rest.remove_prefix(count);
        return number;
    }

private:
    std::string_view m_rest;
};

/// Nothing when a day or time of day does not exist.
std::optional<Timestamp> secondsOf(const std::tm &parts)
{
    std::tm normalised = parts;
    const std::time_t seconds = ::timegm(&normalised);
    const bool exists = normalised.tm_mday == parts.tm_mday && normalised.tm_mon == parts.tm_mon &&
                        normalised.tm_hour == parts.tm_hour && normalised.tm_min == parts.tm_min &&
                        normalised.tm_sec == parts.tm_sec;
    return exists ? std::optional<Timestamp>(seconds) : std::nullopt;
}

bool takeDate(Taker &text, std::tm &parts)
{
    const auto year = text.digits(4);
    const bool hasYear = year && text.take("-");
    const auto month = text.digits(2);
    const bool hasMonth = month && text.take("-");
    const auto day = text.digits(2);
    if (!hasYear || !hasMonth || !day)
        return false;
    parts.tm_year = *year - 1900;
    parts.tm_mon = *month - 1;
    parts.tm_mday = *day;
    return true;
}

/// `micros`: of the fraction. False also for one finer than a microsecond.
bool takeFraction(Taker &text, Timestamp &micros)
{
    int count = 0;
    for (; count < mostDigits; ++count) {
        const auto digit = text.digits(1);
        if (!digit)
            break;
        if (count < microDigits)
            micros = micros * 10 + *digit;
        else if (*digit != 0)
            return false;
    }
    const bool hasDigits = count > 0;
    for (; count < microDigits; ++count)
        micros *= 10;
    return hasDigits;
}

bool takeTimeOfDay(Taker &text, std::tm &parts, Timestamp &micros)
{
    const auto hour = text.digits(2);
    const bool hasHour = hour && text.take(":");
    const auto minute = text.digits(2);
    if (!hasHour || !minute)
        return false;
    parts.tm_hour = *hour;
    parts.tm_min = *minute;
    if (!text.take(":"))
        return true;
    const auto seconds = text.digits(2);
    parts.tm_sec = seconds.value_or(0);
    return seconds && (!text.take(".,") || takeFraction(text, micros));
}

/// Seconds to take from the local time; nothing for what is no offset.
std::optional<Timestamp> takeOffset(Taker &text)
{
    if (text.take("Zz"))
        return 0;
    const bool isBehind = text.take("-");
    if (!isBehind && !text.take("+"))
        return std::nullopt;
    const auto hours = text.digits(2);
    text.take(":");
    const auto minutes = text.isAtEnd() ? std::optional(0) : text.digits(2);
    if (!hours || !minutes || *hours > 23 || *minutes > 59)
        return std::nullopt;
    const Timestamp offset = (*hours * 60 + *minutes) * 60;
    return isBehind ? -offset : offset;
}

Result refuse(std::string_view text, const char *why)
{
    constexpr std::size_t shown = 60;
    return Result(Result::ParseError, "\"" + std::string(text.substr(0, shown)) + "\" " + why);
}

} // namespace

std::string TimeText::format(Timestamp time)
{
    std::time_t seconds = time / second;
    Timestamp micros = time % second;
    if (micros < 0) {
        micros += second;
        --seconds;
    }
    std::tm parts{};
    ::gmtime_r(&seconds, &parts);
    std::array<char, 64> text{};
    const int size = std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%06dZ",
                                   parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                                   parts.tm_hour, parts.tm_min, parts.tm_sec, int(micros));
    return std::string(text.data(), std::size_t(size));
}

Result TimeText::parse(std::string_view text, Zone zone, Timestamp &time)
{
    constexpr const char *form = "is no time like 2026-11-22T09:00:00.000000Z";
    Taker rest(text);
    std::tm parts{};
    Timestamp micros = 0;
    if (!takeDate(rest, parts))
        return refuse(text, form);
    const bool isDate = rest.isAtEnd() && zone == Zone::OrUtc;
    if (!isDate && !(rest.take("Tt ") && takeTimeOfDay(rest, parts, micros)))
        return refuse(text, form);
    const auto seconds = secondsOf(parts);
    if (!seconds)
        return refuse(text, "is a time that does not exist");
    std::optional<Timestamp> offset = 0;
    if (!rest.isAtEnd() || zone == Zone::Told)
        offset = takeOffset(rest);
    if (!offset && rest.isAtEnd())
        return refuse(text, "does not tell its time zone: end it with Z, or with an offset like "
                            "+03:00");
    if (!offset || !rest.isAtEnd())
        return refuse(text, form);
    time = (*seconds - *offset) * second + micros;
    return time >= 0 ? Result() : refuse(text, "is before 1970");
}

} // namespace Records
