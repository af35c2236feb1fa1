#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

class modbusDriver;

/// What an engineer wants to know of the addresses of a device: signals that lie outside of their
/// group, two that take the same registers or the same bit, and points that are read though no
/// signal wants them. Found in order of the tree. GUI thread.
NODES_EXPORT ValidationResults FindAddressTrouble(const modbusDriver &driver);

} // namespace Nodes
