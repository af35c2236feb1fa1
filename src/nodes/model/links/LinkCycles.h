#pragma once

#include "nodes/model/links/NodeLink.h"

#include <vector>

namespace Nodes {

struct PropertyDescriptor;

/// A link that closes a circle: `node` refers to `target`, from where acyclic properties lead back
/// to `node`.
struct LinkCycle
{
    const ConfigNode *node = nullptr;
    const PropertyDescriptor *property = nullptr;
    const ConfigNode *target = nullptr;
};

/// Circles among properties marked acyclic that can be reached from the given nodes, each once.
std::vector<LinkCycle> FindLinkCycles(const std::vector<const ConfigNode *> &nodes);

} // namespace Nodes
