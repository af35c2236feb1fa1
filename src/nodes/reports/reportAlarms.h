#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/data/BasicReportSource.h"

namespace Nodes {

/// How well the alarms served the operators, as a data source of a report.
class NODES_EXPORT reportAlarms : public BasicReportSource
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xD006);
    struct Prop
    {
        static constexpr PropertyId<int> Content{13130, "content"};
        static constexpr PropertyId<int> Limit{13131, "limit"};
    };
    enum enContent {
        ContentMeasures = 1, ///< a row each: what is measured, its value, what is recommended
        ContentFrequent = 2, ///< the alarms that were raised most often
        ContentTimeline = 3, ///< how many were raised in each ten minutes
        ContentAreas = 4,    ///< the parts of the plant, those with the most alarms first
        ContentShifts = 5    ///< each shift of the period
    };

    static KindInfo Kind();

    /// Columns of measures: "name", "value" as text with its unit, "number", "target", "verdict" as
    /// text; of frequent alarms: "rank", "source", "text", "priority", "raised", "last",
    /// "chattering", "fleeting", "standing" in hours; of the timeline: "time", "row", "raised"; of
    /// areas: "rank", "area", "raised", "share" in percent, and how many different "alarms", of
    /// them "chattering", "fleeting", "standing"; of shifts: "time", "row", "shift", "raised",
    /// "rate" in ten minutes.
    std::unique_ptr<ReportQuestion> Ask(const ReportOrder &order) const override;

private:
    int m_content = ContentMeasures;
    int m_limit = 10;
};

} // namespace Nodes
