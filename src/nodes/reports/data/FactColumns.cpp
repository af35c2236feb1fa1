#include "nodes/reports/data/FactColumns.h"

#include "nodes/reports/data/ReportTable.h"
#include "nodes/reports/data/SignalInquiry.h"
#include "nodes/reports/time/LocalCalendar.h"

#include <cmath>

namespace Nodes {

namespace {

constexpr int hourDecimals = 2; // 36 s
constexpr int coverageDecimals = 1;
constexpr double complete = 0.999; // a sample a moment late is no hole
constexpr double percent = 100;

int decimalsOf(const SignalInquiry &signal)
{
    if (signal.aggregate == AggregateStarts)
        return 0;
    return signal.aggregate == AggregateHours ? hourDecimals : signal.decimals;
}

const char *markOf(const SignalFacts &facts)
{
    if (facts.known > 0 && facts.GetCoverage() < complete)
        return "*";
    return facts.worst == Quality::Uncertain ? "?" : "";
}

void addAggregate(ReportTable &table, const std::string &name, enReportAggregate aggregate,
                  int decimals, const std::vector<SignalFacts> &facts)
{
    ReportColumn &column = table.AddNumbers(name, decimals);
    for (const SignalFacts &row : facts)
        column.numbers.push_back(row.Get(aggregate));
}

} // namespace

void FactColumns::AddRows(ReportTable &table, const std::vector<ReportSpan> &rows,
                          enReportStep step, const ShiftPlan &shifts)
{
    table.rows = rows.size();
    ReportColumn &times = table.AddTexts("time");
    for (const ReportSpan &row : rows)
        times.texts.push_back(ReportTimeText(row.begin));
    ReportColumn &titles = table.AddTexts("row");
    for (const ReportSpan &row : rows)
        titles.texts.push_back(RowTitle(step, row, shifts));
}

void FactColumns::AddValue(ReportTable &table, const std::string &name, const SignalInquiry &signal,
                           const std::vector<SignalFacts> &facts)
{
    addAggregate(table, name, enReportAggregate(signal.aggregate), decimalsOf(signal), facts);
}

void FactColumns::AddMark(ReportTable &table, const std::string &name,
                          const std::vector<SignalFacts> &facts)
{
    ReportColumn &column = table.AddTexts(name);
    for (const SignalFacts &row : facts)
        column.texts.emplace_back(markOf(row));
}

void FactColumns::AddAll(ReportTable &table, int decimals, const std::vector<SignalFacts> &facts)
{
    addAggregate(table, "mean", AggregateMean, decimals, facts);
    addAggregate(table, "minimum", AggregateMinimum, decimals, facts);
    addAggregate(table, "maximum", AggregateMaximum, decimals, facts);
    addAggregate(table, "integral", AggregateIntegral, decimals, facts);
    addAggregate(table, "change", AggregateChange, decimals, facts);
    addAggregate(table, "first", AggregateFirst, decimals, facts);
    addAggregate(table, "last", AggregateLast, decimals, facts);
    addAggregate(table, "hours", AggregateHours, hourDecimals, facts);
    addAggregate(table, "starts", AggregateStarts, 0, facts);
    ReportColumn &coverage = table.AddNumbers("coverage", coverageDecimals);
    for (const SignalFacts &row : facts)
        coverage.numbers.push_back(percent * row.GetCoverage());
    ReportColumn &quality = table.AddTexts("quality");
    for (const SignalFacts &row : facts)
        quality.texts.emplace_back(QualityName(row.worst));
}

} // namespace Nodes
