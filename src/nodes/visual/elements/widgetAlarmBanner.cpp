#include "nodes/visual/elements/widgetAlarmBanner.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

widgetAlarmBanner::widgetAlarmBanner() : BasicFramedWidget(NColor(223, 227, 230), 1) {}

KindInfo widgetAlarmBanner::Kind()
{
    return KindBuilder::For<widgetAlarmBanner>("alarmBanner", "Alarm banner", "Строка тревог")
        .Inherit<BasicFramedWidget>()
        .Property<&widgetAlarmBanner::m_hasAcknowledge>(Prop::Acknowledge, "Acknowledge",
                                                        "Квитирование")
        .Property<&widgetAlarmBanner::m_area>(Prop::Area, "Area", "Участок")
        .Hint("shared");
}

} // namespace Nodes
