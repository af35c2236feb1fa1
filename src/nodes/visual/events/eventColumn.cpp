#include "nodes/visual/events/eventColumn.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo eventColumn::Kind()
{
    return KindBuilder::For<eventColumn>("eventColumn", "Event list column",
                                         "Столбец списка событий")
        .Property<&eventColumn::m_column>(Prop::Column, "Column", "Столбец")
        .Choice(ColumnInfo::ColumnTime, "time", "Время")
        .Choice(ColumnInfo::ColumnLevel, "level", "Уровень")
        .Choice(ColumnInfo::ColumnType, "type", "Тип")
        .Choice(ColumnInfo::ColumnText, "text", "Текст")
        .Choice(ColumnInfo::ColumnGroup, "group", "Группа")
        .Choice(ColumnInfo::ColumnSource, "source", "Источник")
        .Choice(ColumnInfo::ColumnUser, "user", "Пользователь")
        .Choice(ColumnInfo::ColumnValue, "value", "Значение")
        .Property<&eventColumn::m_isVisible>(Prop::Visible, "Visible", "Виден")
        .Property<&eventColumn::m_position>(Prop::Position, "Position from the left", "Место слева")
        .Range(1, 8)
        .Property<&eventColumn::m_width>(Prop::Width, "Width, px", "Ширина, пкс")
        .Range(0, 4000);
}

ColumnInfo eventColumn::GetInfo() const
{
    return {ColumnInfo::enColumn(m_column), GetName(), m_isVisible, m_position, m_width};
}

} // namespace Nodes
