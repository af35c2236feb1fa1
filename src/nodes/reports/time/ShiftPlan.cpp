#include "nodes/reports/time/ShiftPlan.h"

#include "nodes/reports/time/LocalCalendar.h"
#include "nodes/timers/TimerSchedule.h"

#include <algorithm>
#include <optional>

namespace Nodes {

namespace {

constexpr int secondsPerHour = 3600;

std::vector<std::string> splitTrimmed(std::string_view text, const char *separators)
{
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        std::string_view part = text.substr(0, end);
        while (!part.empty() && part.front() == ' ')
            part.remove_prefix(1);
        while (!part.empty() && part.back() == ' ')
            part.remove_suffix(1);
        if (!part.empty())
            parts.emplace_back(part);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

} // namespace

ShiftPlan::ShiftPlan() : m_starts{{8 * secondsPerHour, "дневная"}, {20 * secondsPerHour, "ночная"}}
{
}

Result ShiftPlan::Parse(std::string_view starts, std::string_view names, ShiftPlan &plan)
{
    const std::vector<std::string> times = splitTrimmed(starts, " ,;");
    const std::vector<std::string> called = splitTrimmed(names, ";");
    if (times.empty() || called.size() > times.size())
        return Result(Result::ParseError, times.empty() ? "no shift begins at any time"
                                                        : "more names of shifts than shifts");
    ShiftPlan read;
    read.m_starts.clear();
    for (std::size_t i = 0; i < times.size(); ++i) {
        const std::optional<int> second = TimerSchedule::ParseTimeOfDay(times[i]);
        if (!second)
            return Result(Result::ParseError, "'" + times[i] + "' is no time of day as 08:00");
        read.m_starts.push_back({*second, i < called.size() ? called[i] : std::string()});
    }
    const auto earlier = [](const Start &a, const Start &b) { return a.second < b.second; };
    std::stable_sort(read.m_starts.begin(), read.m_starts.end(), earlier);
    for (std::size_t i = 1; i < read.m_starts.size(); ++i) {
        if (read.m_starts[i].second == read.m_starts[i - 1].second)
            return Result(Result::Duplicate, "two shifts begin at the same time");
    }
    plan = std::move(read);
    return Result();
}

ShiftPlan::Shift ShiftPlan::At(Timestamp moment) const
{
    // From the last one of yesterday to the first one of tomorrow.
    LocalDay day = LocalCalendar::DayOf(moment);
    const Start &last = m_starts.back();
    Shift shift{LocalCalendar::MomentOf({day.year, day.month, day.day - 1}, last.second), 0,
                last.name};
    for (int ahead = 0; ahead < 2; ++ahead, ++day.day) {
        for (const Start &start : m_starts) {
            const Timestamp begin = LocalCalendar::MomentOf(day, start.second);
            if (begin > moment) {
                shift.end = begin;
                return shift;
            }
            shift = {begin, 0, start.name};
        }
    }
    shift.end = LocalCalendar::MomentOf(day, m_starts.front().second);
    return shift;
}

} // namespace Nodes
