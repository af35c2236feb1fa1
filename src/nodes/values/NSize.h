#pragma once

namespace Nodes {

/// Size in scene pixels.
struct NSize
{
    int width = 0;
    int height = 0;
    bool operator==(const NSize &o) const { return width == o.width && height == o.height; }
    bool operator!=(const NSize &o) const { return !(*this == o); }
};

} // namespace Nodes
