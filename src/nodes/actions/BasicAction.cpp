#include "nodes/actions/BasicAction.h"

namespace Nodes {

void BasicAction::CollectDemands(AccessDemands &) const {}

void BasicAction::AppendDemands(const NodeLinks &actions, AccessDemands &demands)
{
    for (const NodeLink &link : actions) {
        if (const auto *action = dynamic_cast<const BasicAction *>(link.GetNode()))
            action->CollectDemands(demands);
    }
}

} // namespace Nodes
