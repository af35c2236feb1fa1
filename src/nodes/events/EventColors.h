#pragma once

#include "nodes/values/NColor.h"

namespace Nodes {

/// How the rows of a source's events look in event lists.
struct EventColors
{
    NColor background{255, 255, 255};
    NColor text{0, 0, 0};
};

} // namespace Nodes
