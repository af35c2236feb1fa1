#include "nodes/serial/Utf8.h"

#include <cstdint>
#include <cstring>

namespace Nodes {

namespace {

struct Lead
{
    std::size_t length; // 0: no lead byte
    unsigned char secondMin;
    unsigned char secondMax;
};

// Table 3-7 of the Unicode standard: overlong forms, surrogates and codes over 10FFFF excluded.
Lead leadOf(unsigned char byte)
{
    if (byte < 0x80)
        return {1, 0, 0};
    if (byte >= 0xC2 && byte <= 0xDF)
        return {2, 0x80, 0xBF};
    if (byte >= 0xE0 && byte <= 0xEF)
        return {3, static_cast<unsigned char>(byte == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(byte == 0xED ? 0x9F : 0xBF)};
    if (byte >= 0xF0 && byte <= 0xF4)
        return {4, static_cast<unsigned char>(byte == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(byte == 0xF4 ? 0x8F : 0xBF)};
    return {0, 0, 0};
}

bool isAsciiWord(const char *at)
{
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof word);
    return (word & 0x8080808080808080u) == 0;
}

std::size_t sequenceLength(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const Lead lead = leadOf(byte(0));
    if (lead.length == 0 || lead.length > text.size())
        return 0;
    if (lead.length > 1 && (byte(1) < lead.secondMin || byte(1) > lead.secondMax))
        return 0;
    for (std::size_t i = 2; i < lead.length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    }
    return lead.length;
}

} // namespace

std::optional<std::size_t> FindInvalidUtf8(std::string_view text)
{
    std::size_t at = 0;
    while (at < text.size()) {
        if (at + 8 <= text.size() && isAsciiWord(text.data() + at)) {
            at += 8;
            continue;
        }
        const std::size_t length = sequenceLength(text.substr(at));
        if (length == 0)
            return at;
        at += length;
    }
    return std::nullopt;
}

} // namespace Nodes
