#include "apps/plant/RegisterMap.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Plant {

namespace {
double saturated(double value, double low, double high)
{
    return std::isnan(value) ? 0.0 : std::clamp(std::round(value), low, high);
}

bool isLowWordFirst(RegisterType type)
{
    return type == RegisterType::UInt32Cdab || type == RegisterType::Float32Cdab;
}

bool isFloat(RegisterType type)
{
    return type == RegisterType::Float32Abcd || type == RegisterType::Float32Cdab;
}

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float floatOf(std::uint32_t bits)
{
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}
} // namespace

int RegisterEntry::width() const
{
    const bool single =
        type == RegisterType::Bit || type == RegisterType::Int16 || type == RegisterType::UInt16;
    return single ? 1 : 2;
}

void encode(const RegisterEntry &entry, double value, std::uint16_t *words)
{
    const double raw = value / entry.scale;
    if (entry.type == RegisterType::Int16) {
        words[0] = static_cast<std::uint16_t>(
            static_cast<std::int16_t>(saturated(raw, -32768.0, 32767.0)));
        return;
    }
    if (entry.width() == 1) {
        words[0] = static_cast<std::uint16_t>(saturated(raw, 0.0, 65535.0));
        return;
    }
    const std::uint32_t bits = isFloat(entry.type)
                                   ? bitsOf(static_cast<float>(raw))
                                   : static_cast<std::uint32_t>(saturated(raw, 0.0, 4294967295.0));
    const int high = isLowWordFirst(entry.type) ? 1 : 0;
    words[high] = static_cast<std::uint16_t>(bits >> 16);
    words[1 - high] = static_cast<std::uint16_t>(bits & 0xffffU);
}

double decode(const RegisterEntry &entry, const std::uint16_t *words)
{
    if (entry.type == RegisterType::Int16)
        return static_cast<std::int16_t>(words[0]) * entry.scale;
    if (entry.width() == 1)
        return words[0] * entry.scale;
    const int high = isLowWordFirst(entry.type) ? 1 : 0;
    const std::uint32_t bits = (std::uint32_t(words[high]) << 16) | words[1 - high];
    return (isFloat(entry.type) ? double(floatOf(bits)) : double(bits)) * entry.scale;
}

} // namespace Plant
