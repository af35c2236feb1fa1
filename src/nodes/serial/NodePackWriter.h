#pragma once

#include <string>

namespace Nodes {

class NodesContainer;

/// Bytes of the nodes with their descendants; a node that stands below another of them is packed
/// with that one only. Links whose node does not exist are left out.
std::string PackNodes(const NodesContainer &nodes);

} // namespace Nodes
