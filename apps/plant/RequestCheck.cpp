#include "apps/plant/RequestCheck.h"

#include <modbus.h>

namespace Plant {

namespace {
constexpr std::size_t functionAt = 7;
constexpr std::size_t fixedLength = 12;
constexpr std::size_t maskLength = 14;
constexpr std::size_t writeHeader = 13;
constexpr std::size_t readWriteHeader = 17;

int word(const Frame &frame, std::size_t at)
{
    return (frame[at] << 8) | frame[at + 1];
}

bool hasBytes(const Frame &frame, std::size_t header, int bytes)
{
    return frame.size() == header + static_cast<std::size_t>(bytes) && frame[header - 1] == bytes;
}

bool hasPlausibleLength(const Frame &frame)
{
    switch (frame[functionAt]) {
    case MODBUS_FC_MASK_WRITE_REGISTER:
        return frame.size() == maskLength;
    case MODBUS_FC_WRITE_MULTIPLE_COILS:
        return frame.size() > writeHeader &&
               hasBytes(frame, writeHeader, (word(frame, 10) + 7) / 8);
    case MODBUS_FC_WRITE_MULTIPLE_REGISTERS:
        return frame.size() > writeHeader && hasBytes(frame, writeHeader, word(frame, 10) * 2);
    case MODBUS_FC_WRITE_AND_READ_REGISTERS:
        return frame.size() > readWriteHeader &&
               hasBytes(frame, readWriteHeader, word(frame, 14) * 2);
    default:
        return frame.size() == fixedLength;
    }
}

bool isKnown(int function)
{
    switch (function) {
    case MODBUS_FC_READ_COILS:
    case MODBUS_FC_READ_DISCRETE_INPUTS:
    case MODBUS_FC_READ_HOLDING_REGISTERS:
    case MODBUS_FC_READ_INPUT_REGISTERS:
    case MODBUS_FC_WRITE_SINGLE_COIL:
    case MODBUS_FC_WRITE_SINGLE_REGISTER:
    case MODBUS_FC_WRITE_MULTIPLE_COILS:
    case MODBUS_FC_WRITE_MULTIPLE_REGISTERS:
    case MODBUS_FC_MASK_WRITE_REGISTER:
    case MODBUS_FC_WRITE_AND_READ_REGISTERS:
        return true;
    default:
        return false;
    }
}
} // namespace

std::size_t frameLength(const std::uint8_t *data, std::size_t size)
{
    if (size < leastFrame - 1)
        return 0;
    const bool isModbus = data[2] == 0 && data[3] == 0;
    const std::size_t length = 6U + (std::size_t(data[4]) << 8) + data[5];
    return isModbus && length >= leastFrame && length <= longestFrame ? length : 0;
}

int malformation(const Frame &frame)
{
    if (!isKnown(frame[functionAt]))
        return MODBUS_EXCEPTION_ILLEGAL_FUNCTION;
    return hasPlausibleLength(frame) ? 0 : MODBUS_EXCEPTION_ILLEGAL_DATA_VALUE;
}

WriteSpan writeSpan(const Frame &frame)
{
    switch (frame[functionAt]) {
    case MODBUS_FC_WRITE_SINGLE_COIL:
        return {word(frame, 8), 1, true};
    case MODBUS_FC_WRITE_MULTIPLE_COILS:
        return {word(frame, 8), word(frame, 10), true};
    case MODBUS_FC_WRITE_SINGLE_REGISTER:
    case MODBUS_FC_MASK_WRITE_REGISTER:
        return {word(frame, 8), 1, false};
    case MODBUS_FC_WRITE_MULTIPLE_REGISTERS:
        return {word(frame, 8), word(frame, 10), false};
    case MODBUS_FC_WRITE_AND_READ_REGISTERS:
        return {word(frame, 12), word(frame, 14), false};
    default:
        return {};
    }
}

} // namespace Plant
