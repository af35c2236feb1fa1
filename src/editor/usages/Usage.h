#pragma once

#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/NodeLink.h"

#include <vector>

namespace Editor {

/// A property of a node that leads to another node.
struct Usage
{
    Nodes::LinkUse use;
    Nodes::NodeLink target;
};

using Usages = std::vector<Usage>;

/// Who refers to the nodes, each target in the order given and then by the id of who refers.
Usages FindUsages(const Nodes::NodeLinks &targets);
/// Who refers to the nodes or to what stands below them, and goes not with them.
Usages FindUsagesFromOutside(const Nodes::NodeLinks &nodes);
/// All links of the nodes and of those below them; of the whole project when there are none.
Usages FindLinksOf(const Nodes::NodeLinks &nodes, const Nodes::NodesCollection &project);

} // namespace Editor
