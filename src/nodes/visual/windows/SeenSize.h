#pragma once

#include "nodes/values/NSize.h"

namespace Nodes {

class ConfigNode;
class ValidationResults;

/// Pixels a side beyond which no wall of displays shows all of a picture.
constexpr int LargestSeenSide = 16384;

/// Finds fault with a window or composition of which a part can never be seen.
void CheckSeenSize(const ConfigNode &node, const NSize &size, ValidationResults &results);

} // namespace Nodes
