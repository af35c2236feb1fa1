#pragma once

#include "nodes/reports/time/ReportPeriod.h"

namespace Widgets {

/// The interval of a report as an operator chose it. Plain value.
struct ReportChoice
{
    Nodes::enReportPeriod period = Nodes::PeriodShift;
    bool isCurrent = true; ///< the period of now, whenever now is; else `span`
    Nodes::ReportSpan span;

    Nodes::ReportSpan spanAt(Nodes::Timestamp now, const Nodes::ShiftPlan &shifts) const
    {
        return isCurrent ? Nodes::PeriodAt(period, now, shifts) : span;
    }
};

} // namespace Widgets
