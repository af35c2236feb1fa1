#pragma once

#include "nodes/drivers/modbus/ModbusPoints.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Neighbouring points of one table of a Modbus device, read with one request.
class NODES_EXPORT modbusGroup : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x4001);
    struct Prop
    {
        static constexpr PropertyId<int> Table{4101, "table"};
        static constexpr PropertyId<int> Start{4102, "start"};
        static constexpr PropertyId<int> Count{4103, "count"};
        static constexpr PropertyId<int> Period{4104, "period"};
        static constexpr PropertyId<bool> WriteMultiple{4105, "writeMultiple"};
    };

    static KindInfo Kind();

    ModbusTable GetTable() const { return ModbusTable(m_table); }
    /// Address of the first point as it goes over the wire, from 0.
    int GetFirstAddress() const { return m_start; }
    int GetPointCount() const { return m_count; }
    /// ms
    int GetPeriod() const { return m_period; }
    /// Writes use the functions for several points even for one.
    bool writesMultiple() const { return m_writesMultiple; }

    /// InvalidArgument when the table cannot be read so.
    [[nodiscard]] Result CheckRange() const;
    void Validate(ValidationResults &results) const override;

private:
    int m_table = int(ModbusTable::Holding);
    int m_start = 0;
    int m_count = 1;
    int m_period = 1000;
    bool m_writesMultiple = false;
};

} // namespace Nodes
