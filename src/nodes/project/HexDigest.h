#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>

namespace Nodes {

/// Tells contents apart, in hexadecimal digits.
NODES_EXPORT std::string HexDigest(std::string_view bytes);
/// "" when the file cannot be read.
NODES_EXPORT std::string HexDigestOfFile(const std::string &path);

} // namespace Nodes
