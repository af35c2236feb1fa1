#pragma once

#include "nodes/NodesExport.h"
#include "nodes/reports/data/ReportQuestion.h"
#include "nodes/reports/data/SignalFacts.h"

#include <memory>
#include <string>
#include <vector>

namespace Nodes {

class HistorySource;
class ReportSignalInfo;

/// One signal of a report, looked up: what it is called and where its history is. Read on any
/// thread.
struct NODES_EXPORT SignalInquiry
{
    std::string name; ///< of the column
    std::string text; ///< what the signal is, for people
    std::string unit;
    int decimals = -1;
    double threshold = 0; ///< above it the signal is running
    int aggregate = 0;    ///< enReportAggregate
    Result result;        ///< why it is not read
    std::shared_ptr<const HistorySource> source;

    /// GUI thread.
    static SignalInquiry Of(const ReportSignalInfo &signal, const ReportOrder &order);

    /// What the signal did in each row. `now`: until then its last sample holds. On failure the
    /// rows are as far as they were read.
    [[nodiscard]] Result ReadFacts(const std::vector<ReportSpan> &rows, Timestamp now,
                                   std::vector<SignalFacts> &facts,
                                   const std::atomic<bool> &isCancelled) const;
    /// Its samples within the span, one a row: columns "time", "value" and "quality".
    void ReadSamples(const ReportSpan &span, ReportTable &table,
                     const std::atomic<bool> &isCancelled) const;
};

/// The rows of an order up to its present moment: the last one may be a part.
NODES_EXPORT std::vector<ReportSpan> RowsUntilNow(const ReportOrder &order, int step,
                                                  ReportTable &table);

} // namespace Nodes
