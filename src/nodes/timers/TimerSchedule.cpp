#include "nodes/timers/TimerSchedule.h"

#include <algorithm>
#include <ctime>
#include <limits>

namespace Nodes {

namespace {

constexpr Timestamp never = std::numeric_limits<Timestamp>::max();
constexpr Timestamp second = 1000000;
// The longest day: 24 hours and the hour gained when summer time ends.
constexpr Timestamp longestDay = 25 * 3600 * second;

/// First wall time after `wall` at that local time of day.
Timestamp nextTimeOfDay(Timestamp wall, int secondOfDay)
{
    const std::time_t now = wall / second;
    std::tm local{};
    localtime_r(&now, &local);
    for (int days = 0;; ++days) {
        std::tm day = local;
        day.tm_mday += days;
        day.tm_hour = secondOfDay / 3600;
        day.tm_min = secondOfDay / 60 % 60;
        day.tm_sec = secondOfDay % 60;
        day.tm_isdst = -1;
        const Timestamp candidate = Timestamp(std::mktime(&day)) * second;
        if (candidate > wall)
            return candidate;
    }
}

/// Two digits below `limit` at the front of the text, which is shortened by them.
std::optional<int> takeTwoDigits(std::string_view &text, int limit)
{
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (text.size() < 2 || !isDigit(text[0]) || !isDigit(text[1]))
        return std::nullopt;
    const int number = (text[0] - '0') * 10 + (text[1] - '0');
    text.remove_prefix(2);
    return number < limit ? std::optional(number) : std::nullopt;
}

} // namespace

TimerSchedule::TimerSchedule(Kind kind, Timestamp interval, int secondOfDay)
    : m_kind(kind), m_interval(interval), m_secondOfDay(secondOfDay), m_deadline(never)
{
}

TimerSchedule TimerSchedule::Periodic(Timestamp interval)
{
    return {Kind::Periodic, interval, 0};
}

TimerSchedule TimerSchedule::Once(Timestamp delay)
{
    return {Kind::Once, delay, 0};
}

TimerSchedule TimerSchedule::Daily(int secondOfDay)
{
    return {Kind::Daily, 0, secondOfDay};
}

std::optional<int> TimerSchedule::ParseTimeOfDay(std::string_view text)
{
    int seconds = 0;
    int parts = 0;
    for (const int limit : {24, 60, 60}) {
        if (parts > 0) {
            if (text.empty() && parts == 2)
                return seconds * 60;
            if (text.empty() || text.front() != ':')
                return std::nullopt;
            text.remove_prefix(1);
        }
        const std::optional<int> part = takeTwoDigits(text, limit);
        if (!part)
            return std::nullopt;
        seconds = seconds * 60 + *part;
        ++parts;
    }
    return text.empty() ? std::optional(seconds) : std::nullopt;
}

void TimerSchedule::Begin(Timestamp wall, Timestamp steady)
{
    if (m_kind != Kind::Daily) {
        m_deadline = steady + m_interval;
        return;
    }
    m_nextWall = nextTimeOfDay(wall, m_secondOfDay);
    m_deadline = steady;
}

bool TimerSchedule::Poll(Timestamp wall, Timestamp steady)
{
    if (m_kind == Kind::Daily)
        return pollDaily(wall, steady);
    if (steady < m_deadline)
        return false;
    if (m_kind == Kind::Once)
        m_deadline = never;
    else
        m_deadline += ((steady - m_deadline) / m_interval + 1) * m_interval;
    return true;
}

bool TimerSchedule::pollDaily(Timestamp wall, Timestamp steady)
{
    const bool isDue = wall >= m_nextWall;
    const bool wasSetBack = m_nextWall - wall > longestDay;
    if (isDue || wasSetBack)
        m_nextWall = nextTimeOfDay(wall, m_secondOfDay);
    // The wall clock may be set at any time: look at it every second.
    m_deadline = steady + std::min(m_nextWall - wall, second);
    return isDue;
}

} // namespace Nodes
