#include "nodes/drivers/modbus/ModbusPoints.h"

#include "nodes/values/NumberText.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace Nodes {

namespace {

bool swapsBytes(ModbusByteOrder order)
{
    return order == ModbusByteOrder::BADC || order == ModbusByteOrder::DCBA;
}

bool swapsWords(ModbusByteOrder order)
{
    return order == ModbusByteOrder::CDAB || order == ModbusByteOrder::DCBA;
}

std::uint16_t ordered(ModbusByteOrder order, std::uint16_t word)
{
    return swapsBytes(order) ? std::uint16_t(word << 8 | word >> 8) : word;
}

bool isWide(ModbusType type)
{
    return type == ModbusType::Int32 || type == ModbusType::UInt32 || type == ModbusType::Float32;
}

std::uint32_t join(ModbusByteOrder order, std::uint16_t first, std::uint16_t second)
{
    const std::uint32_t high = ordered(order, swapsWords(order) ? second : first);
    const std::uint32_t low = ordered(order, swapsWords(order) ? first : second);
    return high << 16 | low;
}

void split(ModbusByteOrder order, std::uint32_t raw, ModbusWords &words)
{
    const int high = swapsWords(order) ? 1 : 0;
    words.count = 2;
    words.words[high] = ordered(order, std::uint16_t(raw >> 16));
    words.words[1 - high] = ordered(order, std::uint16_t(raw));
}

float toFloat(std::uint32_t raw)
{
    float number = 0;
    std::memcpy(&number, &raw, sizeof number);
    return number;
}

std::uint32_t fromFloat(float number)
{
    std::uint32_t raw = 0;
    std::memcpy(&raw, &number, sizeof raw);
    return raw;
}

Result invalid(std::string text)
{
    return Result(Result::InvalidArgument, std::move(text));
}

struct Limits
{
    double lowest;
    double highest;
};

template <class Integer> constexpr Limits limitsOf()
{
    return {double(std::numeric_limits<Integer>::min()),
            double(std::numeric_limits<Integer>::max())};
}

Limits rawLimits(ModbusType type)
{
    switch (type) {
    case ModbusType::Int16:
        return limitsOf<std::int16_t>();
    case ModbusType::Int32:
        return limitsOf<std::int32_t>();
    case ModbusType::UInt32:
        return limitsOf<std::uint32_t>();
    case ModbusType::Float32: {
        constexpr double highest = std::numeric_limits<float>::max();
        return {-highest, highest};
    }
    default:
        return limitsOf<std::uint16_t>();
    }
}

double rawNumber(const ModbusPoint &point, const std::uint16_t *words)
{
    switch (point.type) {
    case ModbusType::Int16:
        return std::int16_t(ordered(point.order, words[0]));
    case ModbusType::Int32:
        return std::int32_t(join(point.order, words[0], words[1]));
    case ModbusType::UInt32:
        return join(point.order, words[0], words[1]);
    case ModbusType::Float32:
        return toFloat(join(point.order, words[0], words[1]));
    default:
        return ordered(point.order, words[0]);
    }
}

Result encodeNumber(const ModbusPoint &point, double value, ModbusWords &words)
{
    const bool isFloat = point.type == ModbusType::Float32;
    const double exact = (value - point.offsetValue) / point.scale;
    const double raw = isFloat ? exact : std::round(exact);
    const Limits limits = rawLimits(point.type);
    if (!(raw >= limits.lowest && raw <= limits.highest))
        return Result(Result::OutOfRange, FormatDouble(value) + " does not fit the register: raw " +
                                              FormatDouble(raw) + " is outside " +
                                              FormatDouble(limits.lowest) + ".." +
                                              FormatDouble(limits.highest));
    // By way of a signed 64-bit integer, which holds every raw integer, signed or not.
    const auto bits = isFloat ? fromFloat(float(raw)) : std::uint32_t(std::int64_t(raw));
    if (isWide(point.type)) {
        split(point.order, bits, words);
        return Result();
    }
    words.count = 1;
    words.words[0] = ordered(point.order, std::uint16_t(bits));
    return Result();
}

} // namespace

int ModbusPoint::GetWidth() const
{
    return isWide(type) ? 2 : 1;
}

Result ModbusPoint::Check(int count) const
{
    if (IsBitTable(table) && type != ModbusType::Bool)
        return invalid(
            "coils and discrete inputs hold logical values only: set the data type bool");
    if (offset < 0 || offset + GetWidth() > count)
        return invalid("offset " + std::to_string(offset) + " with " + std::to_string(GetWidth()) +
                       " point(s) lies outside the group of " + std::to_string(count));
    if (type == ModbusType::Bit && (bit < 0 || bit > 15))
        return invalid("a register has the bits 0 to 15, not " + std::to_string(bit));
    if (scale == 0 || !std::isfinite(scale) || !std::isfinite(offsetValue))
        return invalid("scale must be a number other than 0, offset value a number");
    if (type < ModbusType::Bool || type > ModbusType::Bit || order < ModbusByteOrder::ABCD ||
        order > ModbusByteOrder::DCBA)
        return invalid("unknown data type or byte order");
    return Result();
}

SignalValue ModbusPoints::Decode(const ModbusPoint &point, const std::vector<std::uint16_t> &data)
{
    if (point.offset < 0 || std::size_t(point.offset + point.GetWidth()) > data.size())
        return invalid("offset " + std::to_string(point.offset) + " lies outside the " +
                       std::to_string(data.size()) + " point(s) read");
    const std::uint16_t *words = data.data() + point.offset;
    if (point.type == ModbusType::Bool)
        return words[0] != 0;
    if (point.type == ModbusType::Bit)
        return (ordered(point.order, words[0]) >> point.bit & 1) != 0;
    const double value = rawNumber(point, words) * point.scale + point.offsetValue;
    if (!std::isfinite(value))
        return Result(Result::DeviceError, "the device sends no finite number");
    return value;
}

Result ModbusPoints::Encode(const ModbusPoint &point, const SignalValue &value, ModbusWords &words)
{
    if (!IsWritableTable(point.table))
        return Result(Result::ReadOnly, "discrete inputs and input registers cannot be written");
    const double number = value.ToDouble();
    const bool isLogical = point.type == ModbusType::Bool || point.type == ModbusType::Bit;
    const bool isWord = value.ToString() == "true" || value.ToString() == "false";
    if (std::isnan(number) && !(isLogical && isWord))
        return Result(Result::WrongType, "'" + value.ToString() + "' is no number");
    if (!isLogical)
        return encodeNumber(point, number, words);
    const bool isBit = point.type == ModbusType::Bit;
    const std::uint16_t on = ordered(point.order, std::uint16_t(isBit ? 1u << point.bit : 1u));
    words.count = 1;
    words.mask = isBit ? on : std::uint16_t(0xffff);
    words.words[0] = value.ToBool() ? on : std::uint16_t(0);
    return Result();
}

} // namespace Nodes
