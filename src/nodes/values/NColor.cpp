#include "nodes/values/NColor.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace Nodes {

namespace {

std::uint8_t channel(int value)
{
    return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

} // namespace

NColor::NColor(int r, int g, int b, int a)
    : red(channel(r)), green(channel(g)), blue(channel(b)), alpha(channel(a))
{
}

std::string NColor::ToString(bool withAlpha) const
{
    std::string text =
        std::to_string(red) + ", " + std::to_string(green) + ", " + std::to_string(blue);
    if (withAlpha)
        text += ", " + std::to_string(alpha);
    return text;
}

std::string NColor::ToHex() const
{
    std::array<char, 10> buffer{};
    const int length = alpha == 255 ? std::snprintf(buffer.data(), buffer.size(), "#%02x%02x%02x",
                                                    red, green, blue)
                                    : std::snprintf(buffer.data(), buffer.size(),
                                                    "#%02x%02x%02x%02x", red, green, blue, alpha);
    return {buffer.data(), static_cast<std::size_t>(length)};
}

std::optional<NColor> NColor::FromHex(std::string_view text)
{
    if ((text.size() != 7 && text.size() != 9) || text.front() != '#')
        return std::nullopt;
    // from_chars would take a minus sign for the start of a number.
    if (text.find_first_not_of("0123456789abcdefABCDEF", 1) != std::string_view::npos)
        return std::nullopt;
    std::array<int, 4> channels{0, 0, 0, 255};
    for (std::size_t i = 1, c = 0; i < text.size(); i += 2, ++c) {
        const char *end = text.data() + i + 2;
        const auto parsed = std::from_chars(text.data() + i, end, channels[c], 16);
        if (parsed.ec != std::errc() || parsed.ptr != end)
            return std::nullopt;
    }
    return NColor(channels[0], channels[1], channels[2], channels[3]);
}

} // namespace Nodes
