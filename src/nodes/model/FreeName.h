#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// `wanted` when it is not among the names taken; else the same with a space and the lowest free
/// number from `first` on. One walk over the names, however many are such.
NODES_EXPORT std::string FreeName(const std::vector<std::string_view> &taken,
                                  const std::string &wanted, int first);

} // namespace Nodes
