#include "nodes/alarms/alarmColumn.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo alarmColumn::Kind()
{
    return KindBuilder::For<alarmColumn>("alarmColumn", "Alarm window column",
                                         "Столбец окна тревог")
        .Property<&alarmColumn::m_kind>(Prop::Column, "Column", "Столбец")
        .Choice(Number, "number", "Номер строки")
        .Choice(Group, "group", "Состояние и приоритет")
        .Choice(Time, "time", "Время")
        .Choice(Level, "level", "Уровень")
        .Choice(Text, "text", "Текст")
        .Choice(Priority, "priority", "Приоритет")
        .Choice(Area, "area", "Участок")
        .Choice(Source, "source", "Источник")
        .Choice(Value, "value", "Значение")
        .Choice(Acknowledged, "acknowledged", "Время квитирования")
        .Choice(Returned, "returned", "Время снятия")
        .Choice(User, "user", "Кто квитировал")
        .Choice(Comment, "comment", "Комментарий")
        .Property<&alarmColumn::m_width>(Prop::Width, "Width, px", "Ширина, пкс")
        .Range(0, 4000);
}

} // namespace Nodes
