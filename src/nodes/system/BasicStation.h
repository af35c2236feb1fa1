#pragma once

#include "nodes/model/ConfigNode.h"

namespace Nodes {

class systemAuthentication;

/// One computer of the plant: holds the subsystems and everything that runs there. What stands in
/// another station than the local one does not run here, and its signals are bad.
class NODES_EXPORT BasicStation : public ConfigNode
{
public:
    static KindInfo Kind();

    /// User subsystem of this station, else the one of the whole project; null when the project
    /// configures none.
    systemAuthentication *GetSystemAuthentication() const;
};

} // namespace Nodes
