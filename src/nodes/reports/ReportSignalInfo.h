#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/data/BasicReportSource.h"
#include "nodes/reports/data/SignalFacts.h"

namespace Nodes {

class BasicSignal;
class KindBuilder;

/// A signal whose archive a report shows. Its name, GetName(), is that of the data source in the
/// report's template; within a table of the report it is that of a column.
class NODES_EXPORT ReportSignalInfo : public BasicReportSource
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xD002);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal{13101, "signal"};
        static constexpr PropertyId<int> Aggregate{13102, "aggregate"};
        static constexpr PropertyId<int> Step{13103, "step"};
        static constexpr PropertyId<double> Threshold{13104, "threshold"};
        static constexpr PropertyId<int> Decimals{13105, "decimals"};
    };

    static KindInfo Kind();

    /// Null when no signal is set or it is gone.
    BasicSignal *GetSignal() const;
    const NodeLink &GetSignalLink() const { return m_signal; }
    enReportAggregate GetAggregate() const { return enReportAggregate(m_aggregate); }
    /// Of what the aggregate gives: kW become kWh, t/h become t, hours are hours.
    std::string GetUnit() const;
    enReportStep GetStep() const { return enReportStep(m_step); }
    /// Above it the signal counts as running.
    double GetThreshold() const { return m_threshold; }
    /// Of its numbers; -1: those of the signal.
    int GetDecimals() const { return m_decimals; }

    /// Columns "time", "row", "value", "mark" and all that SignalFacts tells, a row for each step;
    /// for samples "time", "value" and "quality".
    std::unique_ptr<ReportQuestion> Ask(const ReportOrder &order) const override;

    /// The choices of steps, for kinds that have such a property.
    static void DescribeSteps(KindBuilder &builder, bool hasSamples);

private:
    NodeLink m_signal;
    int m_aggregate = AggregateMean;
    int m_step = StepHour;
    double m_threshold = 0.5;
    int m_decimals = -1;
};

} // namespace Nodes
