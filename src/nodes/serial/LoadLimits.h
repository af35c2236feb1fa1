#pragma once

#include "nodes/model/ConfigNode.h"

#include <cstddef>

namespace Nodes {

/// What a project file may ask for at most; larger ones are refused before they take memory.
struct LoadLimits
{
    std::size_t fileSize = std::size_t(256) << 20; ///< bytes
    std::size_t nodes = 5000000;
    std::size_t attributes = 16000000;                  ///< of all elements together
    std::size_t attributeLength = std::size_t(1) << 20; ///< bytes
    int depth = ConfigNode::MaximumDepth;               ///< nested elements
};

} // namespace Nodes
