#pragma once

#include "nodes/events/EventColors.h"
#include "nodes/model/BasicNode.h"
#include "nodes/model/properties/BasicProperty.h"

namespace Nodes {

/// What few nodes have: made when needed, so that the others stay small.
struct BasicNode::Rare
{
    std::vector<std::unique_ptr<BasicProperty>> properties;
    Attributes foreign;
    NodeLink originalsParent; ///< of a detached copy
    std::unique_ptr<EventColors> eventColors;
    std::string elementGroup;
};

} // namespace Nodes
