#pragma once

#include "nodes/NodesExport.h"

namespace Nodes {

class BasicStation;

/// Which station of a project this process runs as. Any thread.
class NODES_EXPORT StationFinder
{
public:
    virtual ~StationFinder() = default;

    /// Null when the project has no such station.
    virtual BasicStation *GetLocalStation() const = 0;
};

} // namespace Nodes
