#pragma once

#include "nodes/values/NColor.h"

namespace Nodes {

/// Line style of a curve or border; width in pixels.
struct NPen
{
    enum Style { None = 0, Solid = 1, Dash = 2, Dot = 3, DashDot = 4 };
    NColor color;
    int width = 1;
    Style style = Solid;
    bool operator==(const NPen &o) const
    {
        return color == o.color && width == o.width && style == o.style;
    }
    bool operator!=(const NPen &o) const { return !(*this == o); }
};

} // namespace Nodes
