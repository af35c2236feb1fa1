#include "editor/usages/Usage.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/LinkWalk.h"

#include <unordered_set>

namespace Editor {

namespace {

/// The nodes and all below them, parents before children, each once.
Nodes::NodeLinks withBelow(const Nodes::NodeLinks &nodes)
{
    std::unordered_set<unsigned long> taken;
    Nodes::NodeLinks all;
    for (const Nodes::NodeLink &link : nodes) {
        const Nodes::ConfigNode *node = link.GetNode();
        if (!node || !taken.insert(link.GetNodeId()).second)
            continue;
        all.push_back(link);
        for (const Nodes::NodeLink &below : node->GetNodes(true)) {
            if (taken.insert(below.GetNodeId()).second)
                all.push_back(below);
        }
    }
    return all;
}

} // namespace

Usages FindUsages(const Nodes::NodeLinks &targets)
{
    Usages usages;
    for (const Nodes::NodeLink &target : targets) {
        const Nodes::NodesCollection *project = target.GetNodesCollection();
        if (!project)
            continue;
        for (const Nodes::LinkUse &use : project->FindUses(target))
            usages.push_back({use, target});
    }
    return usages;
}

Usages FindUsagesFromOutside(const Nodes::NodeLinks &nodes)
{
    const Nodes::NodeLinks going = withBelow(nodes);
    std::unordered_set<unsigned long> ids;
    for (const Nodes::NodeLink &node : going)
        ids.insert(node.GetNodeId());
    Usages usages;
    for (const Usage &usage : FindUsages(going)) {
        if (ids.count(usage.use.node.GetNodeId()) == 0)
            usages.push_back(usage);
    }
    return usages;
}

Usages FindLinksOf(const Nodes::NodeLinks &nodes, const Nodes::NodesCollection &project)
{
    Usages usages;
    const Nodes::NodeLinks top =
        nodes.empty() ? Nodes::NodeLinks{Nodes::NodeLink(project.GetRoot())} : nodes;
    for (const Nodes::NodeLink &link : withBelow(top)) {
        const Nodes::ConfigNode &node = *link.GetNode();
        Nodes::VisitLinks(node, *node.GetKind(), [&](const auto &d, const Nodes::NodeLink &to) {
            usages.push_back({{link, d.valueId}, to});
        });
    }
    return usages;
}

} // namespace Editor
