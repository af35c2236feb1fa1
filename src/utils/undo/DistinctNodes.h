#pragma once

#include "nodes/model/NodesArray.h"

namespace Utils {

/// Each node once, in the order given, without links to nothing and without nodes that stand below
/// another of them: they go where it goes.
Nodes::NodesArray distinctNodes(const Nodes::NodeLinks &links);

} // namespace Utils
