#pragma once

#include "nodes/archive/HistoryReader.h"
#include "nodes/reports/data/ReportTable.h"
#include "nodes/reports/time/ReportPeriod.h"

#include <atomic>

namespace Nodes {

class systemCore;

/// What a report is made for. Plain value.
struct ReportOrder
{
    const systemCore *core = nullptr; ///< that runs, else there is no data
    ReportSpan span;
    ShiftPlan shifts;
    HistoryReader reader = HistoryReader::CurrentUser; ///< whose rights count
    Timestamp now = 0; ///< what lies behind it is in the future: it has no rows
};

/// What a data source is going to read, everything that belongs to the tree already looked up: it
/// is answered on any thread, once, also when its nodes have gone meanwhile.
class ReportQuestion
{
public:
    virtual ~ReportQuestion() = default;

    /// May take long; ends with Cancelled in the table's result soon after the flag is set.
    virtual ReportTablePtr Answer(const std::atomic<bool> &isCancelled) = 0;
};

} // namespace Nodes
