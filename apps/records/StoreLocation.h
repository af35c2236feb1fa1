#pragma once

#include "nodes/values/Result.h"

#include <string>

namespace Records {

/// Where an archive or a journal is that the command line names by a data directory, a file or a
/// connection string.
namespace StoreLocation {

enum class Kind { Archive, Journal };

/// Of one that is there: NotFound where a directory or a path has none.
[[nodiscard]] Nodes::Result find(const std::string &store, Kind kind, std::string &location);
/// Of one that may be made.
std::string make(const std::string &store, Kind kind = Kind::Archive);
/// Path of its file; "" when it is no file.
std::string fileOf(const std::string &location);
/// As messages show it: without a password.
std::string shown(const std::string &location);

} // namespace StoreLocation

} // namespace Records
