#pragma once

namespace Nodes {

/// Position in scene pixels.
struct NPoint
{
    int x = 0;
    int y = 0;
    bool operator==(const NPoint &o) const { return x == o.x && y == o.y; }
    bool operator!=(const NPoint &o) const { return !(*this == o); }
};

} // namespace Nodes
