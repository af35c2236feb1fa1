#include "nodes/archive/ArchivedSignals.h"

#include "nodes/archive/archiverGroup.h"
#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"

#include <cstddef>

namespace Nodes {

namespace {

using Orders = std::map<const BasicSignal *, ArchiveOrder>;

/// Whose scope is the nearest so far, by the depth of that in the tree.
using Depths = std::map<const BasicSignal *, std::size_t>;

void addGroup(const archiverGroup &group, Orders &orders, Depths &depths)
{
    for (const NodeLink &scope : group.GetScope()) {
        const ConfigNode *top = scope.GetNode();
        if (!top)
            continue;
        const std::size_t depth = top->GetPathNodes().size();
        NodeLinks below = top->GetNodes(true);
        below.push_back(scope);
        for (const NodeLink &link : below) {
            const auto *signal = dynamic_cast<const BasicSignal *>(link.GetNode());
            if (!signal || !signal->IsLocal())
                continue;
            const auto known = depths.find(signal);
            const bool isNearer =
                known == depths.end() ? orders.count(signal) == 0 : known->second < depth;
            if (!isNearer)
                continue;
            orders[signal] = {&group, group.GetDays(), group.GetMegabytes()};
            depths[signal] = depth;
        }
    }
}

} // namespace

Orders FindArchivedSignals(const BasicNode &node)
{
    Orders orders;
    Depths depths;
    const NodesCollection *project = node.GetNodesCollection();
    if (!project)
        return orders;
    NodeLinks found;
    project->FindNodes(NodeType::TypeArchive, &found);
    for (const NodeLink &link : found) {
        const auto *source = dynamic_cast<const archiverSourceConnector *>(link.GetNode());
        const auto *signal = source && source->IsLocal()
                                 ? dynamic_cast<BasicSignal *>(source->GetSource())
                                 : nullptr;
        if (signal)
            orders.insert({signal, {source, source->GetDays(), source->GetMegabytes()}});
    }
    for (const NodeLink &link : found) {
        const auto *group = dynamic_cast<const archiverGroup *>(link.GetNode());
        if (group && group->IsLocal())
            addGroup(*group, orders, depths);
    }
    return orders;
}

} // namespace Nodes
