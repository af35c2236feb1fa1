#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>

namespace Nodes {

/// UTF-8 text with Latin (ASCII, Latin-1) and Cyrillic capitals made small, for comparisons that
/// ignore case. Everything else, broken sequences included, passes unchanged; any locale.
NODES_EXPORT std::string FoldCase(std::string_view text);

} // namespace Nodes
