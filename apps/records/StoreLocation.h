#pragma once

#include "nodes/values/Result.h"

#include <string>

namespace Records {

/// Where an archive is that the command line names by a data directory, a file or a connection
/// string.
namespace StoreLocation {

/// Of an archive that is there: NotFound where a directory or a path has none.
[[nodiscard]] Nodes::Result find(const std::string &store, std::string &location);
/// Of one that may be made.
std::string make(const std::string &store);
/// Path of its file; "" when it is no file.
std::string fileOf(const std::string &location);
/// As messages show it: without a password.
std::string shown(const std::string &location);

} // namespace StoreLocation

} // namespace Records
