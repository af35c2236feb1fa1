#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/BasicFramedWidget.h"
#include "nodes/visual/elements/widgetAlarmBanner.h"

namespace Nodes {

/// A table of the alarms that stand, chosen by priority, state, area, source and text. Rows look
/// as in the alarm window, whose columns and fonts it has.
class NODES_EXPORT widgetAlarmList : public BasicFramedWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15012);
    struct Prop : BasicFramedWidget::Prop
    {
        static constexpr auto Acknowledge = widgetAlarmBanner::Prop::Acknowledge;
        static constexpr auto Area = widgetAlarmBanner::Prop::Area;
        static constexpr PropertyId<bool> Priority1{12461, "priority1"};
        static constexpr PropertyId<bool> Priority2{12462, "priority2"};
        static constexpr PropertyId<bool> Priority3{12463, "priority3"};
        static constexpr PropertyId<bool> Priority4{12464, "priority4"};
        static constexpr PropertyId<bool> Waiting{12465, "waiting"};
        static constexpr PropertyId<bool> Active{12466, "active"};
        static constexpr PropertyId<NodeLink> Source{12467, "source"};
        static constexpr PropertyId<std::string> Search{12468, "search"};
    };

    widgetAlarmList();
    static KindInfo Kind();

    /// It has buttons that acknowledge.
    bool HasAcknowledge() const { return m_hasAcknowledge; }
    /// Of priority 1 to 4.
    bool ShowsPriority(int priority) const;
    /// What waits for acknowledgement; what is acknowledged and still there.
    bool ShowsWaiting() const { return m_showsWaiting; }
    bool ShowsActive() const { return m_showsActive; }
    /// "": of all.
    const std::string &GetArea() const { return m_area; }
    /// Alarms at or below that node, or of signals there; empty: of all.
    const NodeLink &GetSource() const { return m_source; }
    /// In text, area or source, without regard to case; "": any.
    const std::string &GetSearch() const { return m_search; }

private:
    bool m_hasAcknowledge = true;
    bool m_showsPriority1 = true;
    bool m_showsPriority2 = true;
    bool m_showsPriority3 = true;
    bool m_showsPriority4 = true;
    bool m_showsWaiting = true;
    bool m_showsActive = true;
    std::string m_area;
    NodeLink m_source;
    std::string m_search;
};

} // namespace Nodes
