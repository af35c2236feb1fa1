#pragma once

#include "nodes/drivers/modbus/ModbusPoints.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

class modbusGroup;

/// A value in the registers or bits of a Modbus group; stands below a modbusGroup.
class NODES_EXPORT modbusSignal : public BasicSignal
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x5004);
    struct Prop : BasicSignal::Prop
    {
        static constexpr PropertyId<int> Offset{5401, "offset"};
        static constexpr PropertyId<int> DataType{5402, "dataType"};
        static constexpr PropertyId<int> Bit{5403, "bit"};
        static constexpr PropertyId<int> ByteOrder{5404, "byteOrder"};
        static constexpr PropertyId<double> Scale{5405, "scale"};
        static constexpr PropertyId<double> OffsetValue{5406, "offsetValue"};
    };

    static KindInfo Kind();

    /// The nearest group between this signal and its driver; null without one.
    const modbusGroup *GetGroup() const;
    /// Where the value lies in that group.
    ModbusPoint GetPoint(const modbusGroup &group) const;
    /// InvalidArgument when it stands in no group or does not fit it.
    [[nodiscard]] Result CheckPlace() const;
    void Validate(ValidationResults &results) const override;

private:
    int m_offset = 0;
    int m_dataType = int(ModbusType::UInt16);
    int m_bit = 0;
    int m_byteOrder = int(ModbusByteOrder::ABCD);
    double m_scale = 1;
    double m_offsetValue = 0;
};

} // namespace Nodes
