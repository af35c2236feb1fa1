#pragma once

#include "nodes/NodesExport.h"
#include "nodes/reports/time/ShiftPlan.h"
#include "nodes/values/Timestamp.h"

#include <string>
#include <vector>

namespace Nodes {

/// [begin, end) of a report or of a row of it.
struct ReportSpan
{
    Timestamp begin = 0;
    Timestamp end = 0;

    bool IsEmpty() const { return begin >= end; }
    bool operator==(const ReportSpan &o) const { return begin == o.begin && end == o.end; }
};

/// Period that a report is about.
enum enReportPeriod {
    PeriodShift = 1,
    PeriodDay = 2,
    PeriodWeek = 3, ///< from Monday
    PeriodMonth = 4,
    PeriodFree = 5 ///< as the operator chooses
};

/// Rows that a period is parted into.
enum enReportStep {
    StepSamples = 0, ///< none: each sample is a row
    StepHour = 1,
    StepDay = 2,
    StepShift = 3,
    StepWhole = 4 ///< one row
};

/// The period of that kind which holds the moment; a free one is taken as the day.
NODES_EXPORT ReportSpan PeriodAt(enReportPeriod period, Timestamp moment, const ShiftPlan &shifts);
/// The one before and the one behind; of a free span one of the same length.
NODES_EXPORT ReportSpan PeriodBefore(enReportPeriod period, const ReportSpan &span,
                                     const ShiftPlan &shifts);
NODES_EXPORT ReportSpan PeriodAfter(enReportPeriod period, const ReportSpan &span,
                                    const ShiftPlan &shifts);

constexpr std::size_t MostParts = 100000;
/// Rows of a span without holes, in order; the first and the last may be parts of an hour, a day or
/// a shift. None for an empty span and for samples. A day of 25 hours has 25 rows. No more than
/// MostParts.
NODES_EXPORT std::vector<ReportSpan> PartSpan(const ReportSpan &span, enReportStep step,
                                              const ShiftPlan &shifts);

/// "Смена дневная, 22.11.2026 08:00 – 20:00": for headings, in Russian.
NODES_EXPORT std::string PeriodTitle(enReportPeriod period, const ReportSpan &span,
                                     const ShiftPlan &shifts);
/// What stands in front of a row: "08:00 – 09:00", "22.11.2026", "22.11.2026 дневная".
NODES_EXPORT std::string RowTitle(enReportStep step, const ReportSpan &row,
                                  const ShiftPlan &shifts);
/// "2026-11-22 08:00:00 - 2026-11-22 20:00:00".
NODES_EXPORT std::string ReportIntervalText(const ReportSpan &span);

} // namespace Nodes
