#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Nodes {

/// Names by the dozen. Any thread.
namespace NamePattern {

/// Most names that one pattern makes.
inline constexpr std::size_t Most = 100000;

/// Every name that "К{1..4}/Т{01..20}/{вход,выход}" stands for, the last brace changing fastest.
/// "{a..b}" counts up or down, as wide as the wider end when one begins with 0; "{x,y}" lists
/// texts; "{{" is a brace. InvalidArgument, in Russian, says what is wrong with the pattern;
/// LimitExceeded when it makes more than Most.
[[nodiscard]] NODES_EXPORT Result Expand(const std::string &pattern,
                                         std::vector<std::string> &names);

/// New name of the `index`-th (from 0) of several nodes: in `form` "{имя}" stands for the old name
/// with every `search` in it replaced by `replacement`, "{001}" for a number counted from that one,
/// three digits wide. An unknown brace stays as it is; an empty form is "{имя}".
NODES_EXPORT std::string Renamed(const std::string &name, std::size_t index,
                                 const std::string &search, const std::string &replacement,
                                 const std::string &form);

} // namespace NamePattern

} // namespace Nodes
