#include "nodes/reports/time/LocalCalendar.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;
constexpr int secondsPerHour = 3600;
constexpr int yearsBefore = 1900; // of struct tm

std::tm localOf(Timestamp moment)
{
    const Timestamp floored = moment >= 0 ? moment / second : -((second - 1 - moment) / second);
    const auto seconds = std::time_t(floored);
    std::tm local{};
    ::localtime_r(&seconds, &local);
    return local;
}

std::time_t secondsOf(const LocalDay &day, int secondOfDay, int isSummer)
{
    std::tm local{};
    local.tm_year = day.year - yearsBefore;
    local.tm_mon = day.month - 1;
    local.tm_mday = day.day;
    local.tm_hour = secondOfDay / secondsPerHour;
    local.tm_min = secondOfDay % secondsPerHour / 60;
    local.tm_sec = secondOfDay % 60;
    local.tm_isdst = isSummer;
    return std::mktime(&local);
}

} // namespace

LocalDay LocalCalendar::DayOf(Timestamp moment)
{
    const std::tm local = localOf(moment);
    return {local.tm_year + yearsBefore, local.tm_mon + 1, local.tm_mday};
}

int LocalCalendar::WeekdayOf(const LocalDay &day)
{
    constexpr int noon = 12 * secondsPerHour;
    return (localOf(MomentOf(day, noon)).tm_wday + 6) % 7;
}

Timestamp LocalCalendar::MomentOf(const LocalDay &day, int secondOfDay)
{
    const std::time_t any = secondsOf(day, secondOfDay, -1);
    // Of an hour that comes twice the first one is summer time.
    const std::time_t summer = secondsOf(day, secondOfDay, 1);
    const std::tm shown = localOf(Timestamp(summer) * second);
    const int shownSecond = shown.tm_hour * secondsPerHour + shown.tm_min * 60 + shown.tm_sec;
    const bool isTwice = summer < any && shown.tm_isdst > 0 && shownSecond == secondOfDay;
    return Timestamp(isTwice ? summer : any) * second;
}

Timestamp LocalCalendar::NextHour(Timestamp moment)
{
    const std::tm local = localOf(moment);
    const Timestamp whole = moment >= 0 ? moment - moment % second : moment;
    return whole + Timestamp(secondsPerHour - local.tm_min * 60 - local.tm_sec) * second;
}

std::string LocalCalendar::Text(Timestamp moment, const char *format)
{
    const std::tm local = localOf(moment);
    std::array<char, 128> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &local)};
}

std::string ReportTimeText(Timestamp moment)
{
    std::string text = LocalCalendar::Text(moment, "%Y-%m-%d %H:%M:%S");
    const auto fraction = int(moment % second);
    if (fraction > 0) {
        std::array<char, 16> digits{};
        std::snprintf(digits.data(), digits.size(), ".%06d", fraction);
        text += digits.data();
    }
    return text;
}

} // namespace Nodes
