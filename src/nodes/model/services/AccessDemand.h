#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/model/services/AuthPriv.h"

#include <vector>

namespace Nodes {

/// What the current user must be allowed to do, and with which node, for something to succeed.
struct AccessDemand
{
    enPrivilegeType privilege;
    NodeLink node;
};

using AccessDemands = std::vector<AccessDemand>;

} // namespace Nodes
