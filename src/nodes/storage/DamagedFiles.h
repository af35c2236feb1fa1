#pragma once

#include <string>
#include <vector>

namespace Nodes::DamagedFiles {

/// "<file>.damaged-<UTC time>", numbered where that exists: a name nothing has yet.
std::string FreshName(const std::string &file);
/// Deletes all but the newest `count` of those names; what was deleted.
std::vector<std::string> KeepNewest(const std::string &file, std::size_t count);

} // namespace Nodes::DamagedFiles
