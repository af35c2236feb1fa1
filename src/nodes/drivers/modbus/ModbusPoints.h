#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/SignalValue.h"

#include <cstdint>
#include <vector>

namespace Nodes {

/// The four tables of a device. Codes are stored in properties.
enum class ModbusTable { Coils = 0, Discrete = 1, Holding = 2, Input = 3 };

constexpr bool IsBitTable(ModbusTable table)
{
    return table == ModbusTable::Coils || table == ModbusTable::Discrete;
}
constexpr bool IsWritableTable(ModbusTable table)
{
    return table == ModbusTable::Coils || table == ModbusTable::Holding;
}
/// Most points that one request may read.
constexpr int MaximumCount(ModbusTable table)
{
    return IsBitTable(table) ? 2000 : 125;
}

enum class ModbusType { Bool = 0, Int16, UInt16, Int32, UInt32, Float32, Bit };

/// How the bytes A (highest) to D (lowest) of a value lie in its registers. In a single register
/// BADC and DCBA exchange its two bytes.
enum class ModbusByteOrder { ABCD = 0, CDAB, BADC, DCBA };

/// Where a value lies within a group and how it is coded.
/// Engineering value = raw value * scale + offsetValue; logical values are not scaled.
struct NODES_EXPORT ModbusPoint
{
    ModbusTable table = ModbusTable::Holding;
    int offset = 0; ///< from the group's first point
    ModbusType type = ModbusType::UInt16;
    int bit = 0; ///< of a register, 0 the lowest, for ModbusType::Bit
    ModbusByteOrder order = ModbusByteOrder::ABCD;
    double scale = 1;
    double offsetValue = 0;

    /// Registers or bits the value takes.
    int GetWidth() const;
    /// InvalidArgument, saying what is wrong, when the point cannot lie in a group of `count`.
    [[nodiscard]] Result Check(int count) const;
};

/// What goes over the wire for a write. Of a single register only the bits in `mask` change.
struct ModbusWords
{
    std::uint16_t words[2] = {};
    int count = 0; ///< registers, or 1 for a coil, which is on unless its word is 0
    std::uint16_t mask = 0xffff;
};

namespace ModbusPoints {

/// Value of the point in `data`, the group's registers (or bits, one a word). An error value for a
/// float that is no finite number (DeviceError) and a point that `data` does not hold
/// (InvalidArgument).
NODES_EXPORT SignalValue Decode(const ModbusPoint &point, const std::vector<std::uint16_t> &data);
/// Registers for an engineering value: OutOfRange when the type cannot hold it, WrongType when it
/// is no number, ReadOnly when the table is.
[[nodiscard]] NODES_EXPORT Result Encode(const ModbusPoint &point, const SignalValue &value,
                                         ModbusWords &words);

} // namespace ModbusPoints

} // namespace Nodes
