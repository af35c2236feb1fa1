#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/data/BasicReportSource.h"
#include "nodes/reports/time/ReportPeriod.h"

namespace Nodes {

class ReportSignalInfo;

/// Several signals side by side in one data source of a report: its children, a column each and a
/// row for each hour, day or shift, or a row each.
class NODES_EXPORT reportSummary : public BasicReportSource
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xD004);
    struct Prop
    {
        static constexpr PropertyId<int> Rows{13110, "rows"};
    };
    /// One row for each signal, besides the steps of enReportStep.
    static constexpr int RowsOfSignals = 10;

    static KindInfo Kind();

    std::vector<const ReportSignalInfo *> GetSignals() const;
    /// By rows of time: "time", "row" and for each signal a column of its name with its aggregate
    /// and one of its name with "_mark". By rows of signals: "name", "text", "unit", "value",
    /// "decimals", "mark" and all that SignalFacts tells of the whole period.
    std::unique_ptr<ReportQuestion> Ask(const ReportOrder &order) const override;

protected:
    /// Also reports a summary without signals.
    void Validate(ValidationResults &results) const override;

private:
    int m_rows = StepHour;
};

} // namespace Nodes
