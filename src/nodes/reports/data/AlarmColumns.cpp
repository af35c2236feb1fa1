#include "nodes/reports/data/AlarmColumns.h"

#include "nodes/alarms/statistics/AlarmAreas.h"
#include "nodes/alarms/statistics/AlarmFigures.h"
#include "nodes/alarms/statistics/AlarmMeasure.h"
#include "nodes/reports/data/ReportTable.h"
#include "nodes/reports/data/SignalFacts.h"
#include "nodes/reports/time/LocalCalendar.h"

#include <array>
#include <cstdio>

namespace Nodes {

namespace {

constexpr double hour = 3600e6; // microseconds
constexpr const char *nothing = "—";

// As operators write numbers.
std::string number(double value, int decimals)
{
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    std::string written = text.data();
    const std::size_t point = written.find('.');
    if (point != std::string::npos)
        written[point] = ',';
    return written;
}

std::string valueText(const AlarmMeasure &measure)
{
    if (!measure.isKnown)
        return nothing;
    if (measure.unit == AlarmMeasure::Share)
        return number(100 * measure.value, measure.decimals) + " %";
    return number(measure.value, measure.decimals) +
           (measure.unit == AlarmMeasure::Seconds ? " с" : "");
}

const char *verdictText(HealthVerdict verdict)
{
    switch (verdict) {
    case HealthVerdict::Good:
        return "норма";
    case HealthVerdict::Attention:
        return "внимание";
    case HealthVerdict::Bad:
        return "плохо";
    case HealthVerdict::None:
        break;
    }
    return "";
}

} // namespace

void AlarmColumns::AddMeasures(ReportTable &table, const AlarmFigures &figures)
{
    const std::vector<AlarmMeasure> measures = MeasuresOf(figures);
    table.rows = measures.size();
    const auto addTexts = [&](const char *name, const auto &textOf) {
        ReportColumn &column = table.AddTexts(name);
        for (const AlarmMeasure &measure : measures)
            column.texts.push_back(textOf(measure));
    };
    addTexts("name", [](const AlarmMeasure &measure) { return measure.name; });
    addTexts("value", valueText);
    ReportColumn &numbers = table.AddNumbers("number");
    for (const AlarmMeasure &measure : measures)
        numbers.numbers.push_back(measure.isKnown ? measure.value : SignalFacts::None);
    addTexts("target", [](const AlarmMeasure &measure) { return measure.target; });
    addTexts("verdict", [](const AlarmMeasure &measure) { return verdictText(measure.verdict); });
}

void AlarmColumns::AddFrequent(ReportTable &table, const AlarmFigures &figures, std::size_t most)
{
    enum { Rank, Source, Text, Priority, Raised, Last, Chattering, Fleeting, Standing };
    table.AddNumbers("rank", 0);
    table.AddTexts("source");
    table.AddTexts("text");
    for (const char *name : {"priority", "raised"})
        table.AddNumbers(name, 0);
    table.AddTexts("last");
    for (const char *name : {"chattering", "fleeting"})
        table.AddNumbers(name, 0);
    table.AddNumbers("standing", 1);
    std::vector<ReportColumn> &columns = table.columns;
    for (const AlarmCount &alarm : figures.alarms) {
        if (table.rows == most || alarm.raised == 0)
            break;
        columns[Rank].numbers.push_back(double(++table.rows));
        columns[Source].texts.push_back(alarm.source);
        columns[Text].texts.push_back(alarm.text);
        columns[Priority].numbers.push_back(alarm.priority);
        columns[Raised].numbers.push_back(double(alarm.raised));
        columns[Last].texts.push_back(LocalCalendar::Text(alarm.lastRaised, "%d.%m %H:%M:%S"));
        columns[Chattering].numbers.push_back(double(alarm.chattering));
        columns[Fleeting].numbers.push_back(double(alarm.fleeting));
        columns[Standing].numbers.push_back(double(alarm.longestStanding) / hour);
    }
}

void AlarmColumns::AddTimeline(ReportTable &table, const AlarmFigures &figures)
{
    table.rows = figures.perBin.size();
    ReportColumn &times = table.AddTexts("time");
    for (std::size_t i = 0; i < table.rows; ++i)
        times.texts.push_back(ReportTimeText(figures.begin + Timestamp(i) * AlarmFigures::Bin));
    ReportColumn &titles = table.AddTexts("row");
    for (std::size_t i = 0; i < table.rows; ++i)
        titles.texts.push_back(
            LocalCalendar::Text(figures.begin + Timestamp(i) * AlarmFigures::Bin, "%H:%M"));
    ReportColumn &raised = table.AddNumbers("raised", 0);
    raised.numbers.assign(figures.perBin.begin(), figures.perBin.end());
}

void AlarmColumns::AddAreas(ReportTable &table, const AlarmFigures &figures, std::size_t most)
{
    enum { Rank, Area, Raised, Share, Alarms, Chattering, Fleeting, Standing };
    table.AddNumbers("rank", 0);
    table.AddTexts("area");
    table.AddNumbers("raised", 0);
    table.AddNumbers("share", 1);
    for (const char *name : {"alarms", "chattering", "fleeting", "standing"})
        table.AddNumbers(name, 0);
    std::vector<ReportColumn> &columns = table.columns;
    for (const AlarmArea &area : AlarmAreasOf(figures)) {
        if (table.rows == most || area.raised == 0)
            break;
        columns[Rank].numbers.push_back(double(++table.rows));
        columns[Area].texts.push_back(area.name.empty() ? "Вне папок" : area.name);
        columns[Raised].numbers.push_back(double(area.raised));
        columns[Share].numbers.push_back(100 * double(area.raised) / double(figures.raised));
        columns[Alarms].numbers.push_back(double(area.alarms));
        columns[Chattering].numbers.push_back(double(area.chattering));
        columns[Fleeting].numbers.push_back(double(area.fleeting));
        columns[Standing].numbers.push_back(double(area.standing));
    }
}

void AlarmColumns::AddShifts(ReportTable &table, const AlarmFigures &figures)
{
    enum { Time, Row, Shift, Raised, Rate };
    for (const char *name : {"time", "row", "shift"})
        table.AddTexts(name);
    table.AddNumbers("raised", 0);
    table.AddNumbers("rate", 2);
    std::vector<ReportColumn> &columns = table.columns;
    table.rows = figures.shifts.size();
    for (const AlarmShift &shift : figures.shifts) {
        const std::string day = LocalCalendar::Text(shift.begin, "%d.%m.%Y");
        columns[Time].texts.push_back(ReportTimeText(shift.begin));
        columns[Row].texts.push_back(shift.name.empty()
                                         ? LocalCalendar::Text(shift.begin, "%d.%m.%Y %H:%M")
                                         : day + " " + shift.name);
        columns[Shift].texts.push_back(shift.name);
        columns[Raised].numbers.push_back(double(shift.raised));
        columns[Rate].numbers.push_back(double(shift.raised) * double(AlarmFigures::Bin) /
                                        double(shift.end - shift.begin));
    }
}

} // namespace Nodes
