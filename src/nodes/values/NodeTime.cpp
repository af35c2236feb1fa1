#include "nodes/values/NodeTime.h"

#include "nodes/values/Clock.h"

#include <boost/date_time/posix_time/posix_time.hpp>

#include <array>
#include <ctime>

namespace Nodes {

namespace {

constexpr Timestamp microseconds = 1000000;

/// First second of the period that holds `now`, or with `next` of the one after it.
std::time_t boundary(std::time_t now, enRelativeTimeType type, bool next)
{
    std::tm local{};
    localtime_r(&now, &local);
    const int step = next ? 1 : 0;
    // What is left out of range is normalised by mktime, which also finds the daylight saving time
    // that holds at the boundary. Minutes and hours keep the one of now: where the clock is set
    // back an hour exists twice.
    if (type >= enRelativeTimeType::Day) {
        local.tm_isdst = -1;
        local.tm_hour = 0;
    }
    if (type >= enRelativeTimeType::Hour)
        local.tm_min = 0;
    local.tm_sec = 0;
    switch (type) {
    case enRelativeTimeType::Now:
        return now;
    case enRelativeTimeType::Minute:
        local.tm_min += step;
        break;
    case enRelativeTimeType::Hour:
        local.tm_hour += step;
        break;
    case enRelativeTimeType::Day:
        local.tm_mday += step;
        break;
    case enRelativeTimeType::Week:
        local.tm_mday += 7 * step - (local.tm_wday + 6) % 7;
        break;
    case enRelativeTimeType::Month:
        local.tm_mday = 1;
        local.tm_mon += step;
        break;
    case enRelativeTimeType::Year:
        local.tm_mday = 1;
        local.tm_mon = 0;
        local.tm_year += step;
        break;
    }
    return std::mktime(&local);
}

NodeTime::Time fromTimestamp(Timestamp time)
{
    return boost::posix_time::from_time_t(time / microseconds) +
           boost::posix_time::microseconds(time % microseconds);
}

} // namespace

NodeTime::Time NodeTime::GetTime() const
{
    const Timestamp now = Clock::Current().Now();
    switch (m_kind) {
    case Kind::None:
        return Time(boost::posix_time::not_a_date_time);
    case Kind::Point:
        return m_time;
    case Kind::Span:
        return fromTimestamp(now) + m_duration;
    case Kind::Relative:
        break;
    }
    if (m_type == enRelativeTimeType::Now || m_adjust == enRelativeTimeAdjust::None)
        return fromTimestamp(now) + m_duration;
    const std::time_t edge =
        boundary(now / microseconds, m_type, m_adjust == enRelativeTimeAdjust::End);
    return boost::posix_time::from_time_t(edge) + m_duration;
}

std::string NodeTime::ToString(const std::string &format) const
{
    if (m_kind == Kind::Span)
        return boost::posix_time::to_simple_string(m_duration);
    const Time time = GetTime();
    if (time.is_special())
        return std::string();
    const std::time_t seconds = boost::posix_time::to_time_t(time);
    std::tm local{};
    localtime_r(&seconds, &local);
    std::array<char, 256> text{};
    const char *pattern = format.empty() ? "%d.%m.%Y %H:%M:%S" : format.c_str();
    return std::string(text.data(), std::strftime(text.data(), text.size(), pattern, &local));
}

} // namespace Nodes
