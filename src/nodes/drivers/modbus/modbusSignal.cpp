#include "nodes/drivers/modbus/modbusSignal.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo modbusSignal::Kind()
{
    return KindBuilder::For<modbusSignal>("modbusSignal", "Modbus signal", "Сигнал Modbus")
        .Inherit<BasicSignal>()
        .Property<&modbusSignal::m_offset>(Prop::Offset, "Offset in the group", "Смещение в группе")
        .Range(0, 1999)
        .Property<&modbusSignal::m_dataType>(Prop::DataType, "Data type", "Тип данных")
        .Range(0, int(ModbusType::Bit))
        .Choice(int(ModbusType::Bool), "bool", "Логический")
        .Choice(int(ModbusType::Int16), "int16", "Целый 16 бит")
        .Choice(int(ModbusType::UInt16), "uint16", "Целый 16 бит без знака")
        .Choice(int(ModbusType::Int32), "int32", "Целый 32 бит")
        .Choice(int(ModbusType::UInt32), "uint32", "Целый 32 бит без знака")
        .Choice(int(ModbusType::Float32), "float32", "Вещественный 32 бит")
        .Choice(int(ModbusType::Bit), "bit", "Бит регистра")
        .Property<&modbusSignal::m_bit>(Prop::Bit, "Bit", "Бит")
        .Range(0, 15)
        .Property<&modbusSignal::m_byteOrder>(Prop::ByteOrder, "Byte order", "Порядок байтов")
        .Range(0, int(ModbusByteOrder::DCBA))
        .Choice(int(ModbusByteOrder::ABCD), "ABCD", "ABCD")
        .Choice(int(ModbusByteOrder::CDAB), "CDAB", "CDAB")
        .Choice(int(ModbusByteOrder::BADC), "BADC", "BADC")
        .Choice(int(ModbusByteOrder::DCBA), "DCBA", "DCBA")
        .Property<&modbusSignal::m_scale>(Prop::Scale, "Scale", "Множитель")
        .Property<&modbusSignal::m_offsetValue>(Prop::OffsetValue, "Added value", "Слагаемое");
}

const modbusGroup *modbusSignal::GetGroup() const
{
    for (const ConfigNode *parent = GetParent(); parent; parent = parent->GetParent()) {
        if (const auto *group = dynamic_cast<const modbusGroup *>(parent))
            return group;
        if (dynamic_cast<const BasicDriver *>(parent))
            return nullptr;
    }
    return nullptr;
}

ModbusPoint modbusSignal::GetPoint(const modbusGroup &group) const
{
    ModbusPoint point;
    point.table = group.GetTable();
    point.offset = m_offset;
    point.type = ModbusType(m_dataType);
    point.bit = m_bit;
    point.order = ModbusByteOrder(m_byteOrder);
    point.scale = m_scale;
    point.offsetValue = m_offsetValue;
    return point;
}

Result modbusSignal::CheckPlace() const
{
    const modbusGroup *group = GetGroup();
    if (!group)
        return Result(this, Result::InvalidArgument, GetName() + " stands in no Modbus group");
    const Result fits = GetPoint(*group).Check(group->GetPointCount());
    return fits ? Result() : Result(this, fits.GetType(), GetName() + ": " + fits.GetDetail());
}

void modbusSignal::Validate(ValidationResults &results) const
{
    BasicSignal::Validate(results);
    BasicDriver::ValidatePlace<modbusDriver>(*this, "«Устройство Modbus TCP»", results);
    const Result place = CheckPlace();
    if (!place)
        results.Add(GetNodeLink(), place,
                    GetName() + ": проверьте группу, смещение, тип данных и множитель");
}

} // namespace Nodes
