#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/NColor.h"

namespace Nodes {

/// How the rows of a source's events look in event lists.
struct EventColors
{
    NColor background{255, 255, 255};
    NColor text{0, 0, 0};
};

/// A kind of node whose events can be given colours.
class NODES_EXPORT HasEventColors
{
public:
    virtual ~HasEventColors();

    virtual EventColors GetEventColors() const = 0;
};

} // namespace Nodes
