#include "nodes/model/services/AccessCheck.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/services/AccessGuard.h"
#include "nodes/model/services/ModelServices.h"

namespace Nodes {

std::string UserNameFor(const ConfigNode &node)
{
    const AccessGuard *guard = node.GetServices().access;
    return guard ? guard->GetUserName(node) : std::string();
}

Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node)
{
    const AccessGuard *guard = node.GetServices().access;
    return !guard || guard->Allows(privilege, node) ? Result()
                                                    : Result(&node, Result::AccessDenied);
}

bool IsForbiddenToView(const ConfigNode &node)
{
    const AccessGuard *guard = node.GetServices().access;
    return guard && guard->ForbidsToView(node);
}

Result DemandAccess(enPrivilegeType privilege, const ConfigNode &node, const std::string &what)
{
    const Result access = CheckAccess(privilege, node);
    if (!access)
        node.StoreMessage(LevelSecurity, "Отклонено, нет прав: " + what, node.GetNodeLink());
    return access;
}

enAccessDeniedAction AccessDeniedActionFor(const ConfigNode &node)
{
    const AccessGuard *guard = node.GetServices().access;
    return guard ? guard->GetAccessDeniedAction(node) : AccessDeniedRefuse;
}

enAccessDeniedAction DenialOf(const AccessDemands &demands)
{
    for (const AccessDemand &demand : demands) {
        const ConfigNode *node = demand.node.GetNode();
        if (node && !CheckAccess(demand.privilege, *node))
            return AccessDeniedActionFor(*node);
    }
    return AccessDeniedRefuse;
}

} // namespace Nodes
