#pragma once

#include <string>
#include <string_view>

namespace Nodes {

/// Tells contents apart, in hexadecimal digits.
std::string HexDigest(std::string_view bytes);
/// "" when the file cannot be read.
std::string HexDigestOfFile(const std::string &path);

} // namespace Nodes
