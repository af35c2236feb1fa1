#pragma once

#include "nodes/NodesExport.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace Nodes {

/// Offset of the first byte that is no part of well-formed UTF-8; nothing when all of it is.
NODES_EXPORT std::optional<std::size_t> FindInvalidUtf8(std::string_view text);

} // namespace Nodes
