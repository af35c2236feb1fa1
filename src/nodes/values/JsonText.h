#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>

namespace Nodes {

/// A text as JSON has it, in quotes; what is no UTF-8 stays as it is.
NODES_EXPORT std::string JsonText(std::string_view text);

} // namespace Nodes
