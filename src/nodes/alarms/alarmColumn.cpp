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
        .Property<&alarmColumn::m_width>(Prop::Width, "Width, px", "Ширина, пкс")
        .Range(0, 4000);
}

} // namespace Nodes
