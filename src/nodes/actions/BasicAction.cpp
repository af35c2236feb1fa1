#include "nodes/actions/BasicAction.h"

namespace Nodes {

void BasicAction::CollectDemands(AccessDemands &) const {}

} // namespace Nodes
