#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>

/// Compressed bytes with a checksum of what they hold: a Zstandard frame.
namespace Nodes::Compression {

std::string Pack(std::string_view bytes);
/// False when something of it was changed.
[[nodiscard]] bool Unpack(std::string_view packed, std::string &bytes);

} // namespace Nodes::Compression
