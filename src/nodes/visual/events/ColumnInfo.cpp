#include "nodes/visual/events/ColumnInfo.h"

namespace Nodes {

std::vector<ColumnInfo> ColumnInfo::Defaults()
{
    return {
        {ColumnTime, "Время", true, 1, 248},        {ColumnLevel, "Уровень", true, 2, 192},
        {ColumnType, "Тип", true, 3, 176},          {ColumnText, "Текст", true, 5, 0},
        {ColumnGroup, "Группа", false, 7, 240},     {ColumnSource, "Источник", true, 4, 240},
        {ColumnUser, "Пользователь", true, 6, 160}, {ColumnValue, "Значение", false, 8, 160},
    };
}

} // namespace Nodes
