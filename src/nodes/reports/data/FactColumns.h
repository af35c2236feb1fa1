#pragma once

#include "nodes/reports/data/SignalFacts.h"
#include "nodes/reports/time/ReportPeriod.h"

#include <string>
#include <vector>

namespace Nodes {

struct ReportTable;
struct SignalInquiry;

/// Columns of a report's table made of what signals did. One cell a row, in the order of the facts.
namespace FactColumns {

/// "time", the begin of each row, and "row", its title.
void AddRows(ReportTable &table, const std::vector<ReportSpan> &rows, enReportStep step,
             const ShiftPlan &shifts);
/// The signal's aggregate.
void AddValue(ReportTable &table, const std::string &name, const SignalInquiry &signal,
              const std::vector<SignalFacts> &facts);
/// "*" beside what is not known for the whole row, "?" beside what is uncertain; "" where nothing
/// is known, which the missing value tells itself.
void AddMark(ReportTable &table, const std::string &name, const std::vector<SignalFacts> &facts);
/// "mean", "minimum", "maximum", "integral", "change", "first", "last", "hours", "starts",
/// "coverage" in percent, "quality" as text.
void AddAll(ReportTable &table, int decimals, const std::vector<SignalFacts> &facts);

} // namespace FactColumns

} // namespace Nodes
