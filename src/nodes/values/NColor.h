#pragma once

#include "nodes/NodesExport.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Nodes {

/// Colour with alpha, each channel 0 to 255.
struct NODES_EXPORT NColor
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    NColor() = default;
    /// Channels are clamped to 0..255.
    NColor(int r, int g, int b, int a = 255);

    /// "r, g, b" or, with alpha, "r, g, b, a", as style sheets take it inside rgba().
    std::string ToString(bool withAlpha) const;
    /// "#rrggbb", or "#rrggbbaa" when not opaque: the form of project files.
    std::string ToHex() const;
    /// Reads the ToHex forms; nothing for any other text.
    static std::optional<NColor> FromHex(std::string_view text);

    bool operator==(const NColor &o) const
    {
        return red == o.red && green == o.green && blue == o.blue && alpha == o.alpha;
    }
    bool operator!=(const NColor &o) const { return !(*this == o); }
};

} // namespace Nodes
