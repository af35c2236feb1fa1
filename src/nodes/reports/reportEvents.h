#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/data/BasicReportSource.h"

namespace Nodes {

/// An excerpt of the event journal as a data source of a report.
class NODES_EXPORT reportEvents : public BasicReportSource
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xD005);
    struct Prop
    {
        static constexpr PropertyId<int> MaximumLevel{13120, "maximumLevel"};
        static constexpr PropertyId<std::string> Text{13121, "text"};
        static constexpr PropertyId<int> Of{13122, "of"};
        static constexpr PropertyId<NodeLinks> Sources{13123, "sources"};
        static constexpr PropertyId<int> Limit{13124, "limit"};
        static constexpr PropertyId<int> Order{13125, "order"};
    };
    enum enEventsOf {
        EventsOfAll = 1,
        EventsOfAlarms = 2, ///< raised, returned, acknowledged, shelved and so on
        EventsOfUsers = 3   ///< what users did
    };

    static KindInfo Kind();

    /// Columns "time", "date", "clock", "level" as a number, "levelText", "type" as a number,
    /// "source", "text", "user", "old", "new", "priority".
    std::unique_ptr<ReportQuestion> Ask(const ReportOrder &order) const override;

private:
    int m_maximumLevel = 8;
    std::string m_text;
    int m_of = EventsOfAll;
    NodeLinks m_sources;
    int m_limit = 1000;
    int m_order = 0; // JournalQuery::Order
};

} // namespace Nodes
