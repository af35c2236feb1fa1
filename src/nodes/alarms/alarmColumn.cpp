#include "nodes/alarms/alarmColumn.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo alarmColumn::Kind()
{
    return KindBuilder::For<alarmColumn>(NodeType::SubtypeAlarmColumn, "alarmColumn",
                                         "Alarm window column", "Столбец окна тревог")
        .Property<&alarmColumn::m_kind>(9301, "column", "Column", "Столбец")
        .Choice(Number, "number", "Номер строки")
        .Choice(Group, "group", "Состояние и приоритет")
        .Choice(Time, "time", "Время")
        .Choice(Level, "level", "Уровень")
        .Choice(Text, "text", "Текст")
        .Property<&alarmColumn::m_width>(9302, "width", "Width, px", "Ширина, пкс")
        .Range(0, 4000);
}

} // namespace Nodes
