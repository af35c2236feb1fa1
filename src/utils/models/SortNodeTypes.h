#pragma once

#include "utils/UtilsExport.h"

#include "nodes/model/NodeType.h"

#include <vector>

namespace Utils {

/// Types grouped for creation menus: one group per family, in the order in which families and
/// types first occur; a type named twice stands once.
UTILS_EXPORT std::vector<std::vector<Nodes::NodeType>>
SortNodeTypes(const std::vector<Nodes::NodeType> &types);

} // namespace Utils
