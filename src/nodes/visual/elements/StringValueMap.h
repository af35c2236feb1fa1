#pragma once

#include "nodes/values/SignalValue.h"

#include <string>
#include <utility>
#include <vector>

namespace Nodes {

/// Texts that operators choose from, each with the value it stands for, in the order shown.
using StringValueMap = std::vector<std::pair<std::string, SignalValue>>;

} // namespace Nodes
