#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/BasicFramedWidget.h"

namespace Nodes {

/// A page that tells how well the alarms of the station serve its operators, see AlarmStatistics.
class NODES_EXPORT widgetAlarmHealth : public BasicFramedWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15013);
    struct Prop : BasicFramedWidget::Prop
    {
        static constexpr PropertyId<int> Period{12500, "period"};
        static constexpr PropertyId<int> Refresh{12501, "refresh"};
        static constexpr PropertyId<int> Fleeting{12502, "fleeting"};
        static constexpr PropertyId<int> Standing{12503, "standing"};
    };

    enum PeriodKind { Day = 1, Week = 2, Month = 3 };

    widgetAlarmHealth();
    static KindInfo Kind();

    /// The period that the page begins with, up to the present.
    PeriodKind GetPeriod() const { return PeriodKind(m_period); }
    /// Minutes after which a period that reaches up to the present is computed again; 0: only when
    /// somebody asks.
    int GetRefresh() const { return m_refresh; }
    /// Seconds: an occurrence that is over sooner and was not acknowledged is fleeting.
    int GetFleeting() const { return m_fleeting; }
    /// Hours: an occurrence that lasts longer stands.
    int GetStanding() const { return m_standing; }

private:
    int m_period = Week;
    int m_refresh = 5;
    int m_fleeting = 10;
    int m_standing = 24;
};

} // namespace Nodes
