#pragma once

#include <string>

namespace Nodes {

class ConfigNode;

/// `wanted` when no child of the parent has that name; else the same with a space and the lowest
/// free number from `first` on. One walk over the children, however many have such names.
std::string FreeName(const ConfigNode &parent, const std::string &wanted, int first);

} // namespace Nodes
