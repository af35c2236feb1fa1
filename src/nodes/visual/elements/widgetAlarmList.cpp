#include "nodes/visual/elements/widgetAlarmList.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

widgetAlarmList::widgetAlarmList() : BasicFramedWidget(NColor(38, 44, 49), 0) {}

bool widgetAlarmList::ShowsPriority(int priority) const
{
    switch (priority) {
    case 1:
        return m_showsPriority1;
    case 2:
        return m_showsPriority2;
    case 3:
        return m_showsPriority3;
    default:
        return m_showsPriority4;
    }
}

KindInfo widgetAlarmList::Kind()
{
    return KindBuilder::For<widgetAlarmList>("alarmList", "Alarm list", "Список тревог")
        .Inherit<BasicFramedWidget>()
        .Property<&widgetAlarmList::m_hasAcknowledge>(Prop::Acknowledge, "Acknowledge",
                                                      "Квитирование")
        .Property<&widgetAlarmList::m_showsPriority1>(Prop::Priority1, "Priority 1", "Приоритет 1")
        .Property<&widgetAlarmList::m_showsPriority2>(Prop::Priority2, "Priority 2", "Приоритет 2")
        .Property<&widgetAlarmList::m_showsPriority3>(Prop::Priority3, "Priority 3", "Приоритет 3")
        .Property<&widgetAlarmList::m_showsPriority4>(Prop::Priority4, "Priority 4", "Приоритет 4")
        .Property<&widgetAlarmList::m_showsWaiting>(Prop::Waiting, "Unacknowledged",
                                                    "Неквитированные")
        .Property<&widgetAlarmList::m_showsActive>(Prop::Active, "Acknowledged and active",
                                                   "Квитированные активные")
        .Property<&widgetAlarmList::m_area>(Prop::Area, "Area", "Участок")
        .Hint("shared")
        .Property<&widgetAlarmList::m_source>(Prop::Source, "Source", "Источник")
        .Hint("any")
        .Property<&widgetAlarmList::m_search>(Prop::Search, "Text", "Текст");
}

} // namespace Nodes
