#include "nodes/reports/time/ReportPeriod.h"

#include "nodes/reports/time/LocalCalendar.h"

#include <algorithm>
#include <cstdint>

namespace Nodes {

namespace {

constexpr int daysOfWeek = 7;
// Texts of moments.
constexpr const char *shortTime = "%H:%M";
constexpr const char *date = "%d.%m.%Y";
constexpr const char *dateAndTime = "%d.%m.%Y %H:%M";
constexpr const char *dash = " – ";

ReportSpan days(const LocalDay &first, int count)
{
    LocalDay behind = first;
    behind.day += count;
    return {LocalCalendar::MomentOf(first), LocalCalendar::MomentOf(behind)};
}

std::string fromTo(const ReportSpan &span)
{
    const std::string begin = LocalCalendar::Text(span.begin, dateAndTime);
    const bool isOneDay =
        LocalCalendar::Text(span.begin, date) == LocalCalendar::Text(span.end, date);
    return begin + dash + LocalCalendar::Text(span.end, isOneDay ? shortTime : dateAndTime);
}

Timestamp rowEnd(enReportStep step, Timestamp begin, const ShiftPlan &shifts)
{
    switch (step) {
    case StepHour:
        return LocalCalendar::NextHour(begin);
    case StepDay:
        return PeriodAt(PeriodDay, begin, shifts).end;
    case StepShift:
        return PeriodAt(PeriodShift, begin, shifts).end;
    case StepSamples:
    case StepWhole:
        break;
    }
    return INT64_MAX;
}

} // namespace

ReportSpan PeriodAt(enReportPeriod period, Timestamp moment, const ShiftPlan &shifts)
{
    LocalDay day = LocalCalendar::DayOf(moment);
    switch (period) {
    case PeriodShift: {
        const ShiftPlan::Shift shift = shifts.At(moment);
        return {shift.begin, shift.end};
    }
    case PeriodWeek:
        day.day -= LocalCalendar::WeekdayOf(day);
        return days(day, daysOfWeek);
    case PeriodMonth:
        return {LocalCalendar::MomentOf({day.year, day.month, 1}),
                LocalCalendar::MomentOf({day.year, day.month + 1, 1})};
    case PeriodDay:
    case PeriodFree:
        break;
    }
    return days(day, 1);
}

ReportSpan PeriodBefore(enReportPeriod period, const ReportSpan &span, const ShiftPlan &shifts)
{
    if (period == PeriodFree)
        return {span.begin - (span.end - span.begin), span.begin};
    return PeriodAt(period, span.begin - 1, shifts);
}

ReportSpan PeriodAfter(enReportPeriod period, const ReportSpan &span, const ShiftPlan &shifts)
{
    if (period == PeriodFree)
        return {span.end, span.end + (span.end - span.begin)};
    return PeriodAt(period, span.end, shifts);
}

std::vector<ReportSpan> PartSpan(const ReportSpan &span, enReportStep step, const ShiftPlan &shifts)
{
    std::vector<ReportSpan> rows;
    if (step == StepSamples)
        return rows;
    for (Timestamp begin = span.begin; begin < span.end && rows.size() < MostParts;) {
        const Timestamp end = std::min(rowEnd(step, begin, shifts), span.end);
        rows.push_back({begin, end});
        begin = end;
    }
    return rows;
}

std::string PeriodTitle(enReportPeriod period, const ReportSpan &span, const ShiftPlan &shifts)
{
    switch (period) {
    case PeriodShift: {
        const std::string name = shifts.At(span.begin).name;
        return "Смена" + (name.empty() ? name : " " + name) + ", " + fromTo(span);
    }
    case PeriodDay:
        return "Сутки " + LocalCalendar::Text(span.begin, date);
    case PeriodWeek:
        return "Неделя " + LocalCalendar::Text(span.begin, date) + dash +
               LocalCalendar::Text(span.end - 1, date);
    case PeriodMonth:
        return "Месяц " + LocalCalendar::Text(span.begin, "%m.%Y");
    case PeriodFree:
        break;
    }
    return "Период " + fromTo(span);
}

std::string RowTitle(enReportStep step, const ReportSpan &row, const ShiftPlan &shifts)
{
    switch (step) {
    case StepHour:
        return LocalCalendar::Text(row.begin, shortTime) + dash +
               LocalCalendar::Text(row.end, shortTime);
    case StepDay:
        return LocalCalendar::Text(row.begin, date);
    case StepShift: {
        const std::string name = shifts.At(row.begin).name;
        return LocalCalendar::Text(row.begin, date) + " " +
               (name.empty() ? LocalCalendar::Text(row.begin, shortTime) : name);
    }
    case StepSamples:
    case StepWhole:
        break;
    }
    return fromTo(row);
}

std::string ReportIntervalText(const ReportSpan &span)
{
    return ReportTimeText(span.begin) + " - " + ReportTimeText(span.end);
}

} // namespace Nodes
