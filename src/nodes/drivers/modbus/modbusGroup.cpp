#include "nodes/drivers/modbus/modbusGroup.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo modbusGroup::Kind()
{
    return KindBuilder::For<modbusGroup>("modbusGroup", "Modbus group", "Группа Modbus")
        .Property<&modbusGroup::m_table>(Prop::Table, "Table", "Таблица")
        .Range(0, int(ModbusTable::Input))
        .Choice(int(ModbusTable::Coils), "coils", "Дискретные выходы")
        .Choice(int(ModbusTable::Discrete), "discrete", "Дискретные входы")
        .Choice(int(ModbusTable::Holding), "holding", "Регистры хранения")
        .Choice(int(ModbusTable::Input), "input", "Входные регистры")
        .Property<&modbusGroup::m_start>(Prop::Start, "First address", "Начальный адрес")
        .Range(0, 65535)
        .Property<&modbusGroup::m_count>(Prop::Count, "Count", "Количество")
        .Range(1, MaximumCount(ModbusTable::Coils))
        .Property<&modbusGroup::m_period>(Prop::Period, "Period, ms", "Период опроса, мс")
        .Range(10, 3600000)
        .Property<&modbusGroup::m_writesMultiple>(Prop::WriteMultiple, "Write with FC15/FC16",
                                                  "Запись функциями 15 и 16")
        .Children({NodeType::TypeSignal, NodeType::TypeFolder});
}

Result modbusGroup::CheckRange() const
{
    const int most = MaximumCount(GetTable());
    if (m_count > most)
        return Result(this, Result::InvalidArgument,
                      GetName() + ": one request reads at most " + std::to_string(most) +
                          " points of this table, not " + std::to_string(m_count));
    if (m_start + m_count > 65536)
        return Result(this, Result::InvalidArgument,
                      GetName() + ": addresses end at 65535, the group at " +
                          std::to_string(m_start + m_count - 1));
    return Result();
}

void modbusGroup::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const Result range = CheckRange();
    if (!range)
        results.Add(GetNodeLink(), range,
                    GetName() + ": не более " + std::to_string(MaximumCount(GetTable())) +
                        " точек этой таблицы, адреса до 65535");
}

} // namespace Nodes
