#pragma once

namespace Nodes {

/// Rectangle in scene pixels; width and height may be 0.
struct NRect
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const NRect &o) const
    {
        return x == o.x && y == o.y && width == o.width && height == o.height;
    }
    bool operator!=(const NRect &o) const { return !(*this == o); }
};

} // namespace Nodes
