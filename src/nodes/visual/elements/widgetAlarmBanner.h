#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/elements/BasicFramedWidget.h"

namespace Nodes {

/// One line that always tells how the alarms of the station stand: the one to be seen to next, and
/// how many there are of each priority.
class NODES_EXPORT widgetAlarmBanner : public BasicFramedWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15011);
    struct Prop : BasicFramedWidget::Prop
    {
        static constexpr PropertyId<bool> Acknowledge{12451, "acknowledge"};
        static constexpr PropertyId<std::string> Area{12452, "area"};
    };

    widgetAlarmBanner();
    static KindInfo Kind();

    /// It has a button that acknowledges the alarm shown.
    bool HasAcknowledge() const { return m_hasAcknowledge; }
    /// Alarms of this area only; "": of all.
    const std::string &GetArea() const { return m_area; }

private:
    bool m_hasAcknowledge = true;
    std::string m_area;
};

} // namespace Nodes
