#include "nodes/visual/elements/widgetAlarmHealth.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

widgetAlarmHealth::widgetAlarmHealth() : BasicFramedWidget(NColor(227, 231, 234), 0) {}

KindInfo widgetAlarmHealth::Kind()
{
    return KindBuilder::For<widgetAlarmHealth>("alarmHealth", "Alarm health", "Здоровье тревог")
        .Inherit<BasicFramedWidget>()
        .Property<&widgetAlarmHealth::m_period>(Prop::Period, "Period", "Период")
        .Choice(Day, "day", "Сутки")
        .Choice(Week, "week", "Неделя")
        .Choice(Month, "month", "Месяц")
        .Property<&widgetAlarmHealth::m_refresh>(Prop::Refresh, "Refresh, min", "Обновление, мин")
        .Range(0, 1440)
        .Property<&widgetAlarmHealth::m_fleeting>(Prop::Fleeting, "Fleeting below, s",
                                                  "Мимолётная короче, с")
        .Range(1, 600)
        .Property<&widgetAlarmHealth::m_standing>(Prop::Standing, "Standing beyond, h",
                                                  "Стоящая дольше, ч")
        .Range(1, 720);
}

} // namespace Nodes
