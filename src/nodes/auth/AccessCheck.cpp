#include "nodes/auth/AccessCheck.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemCore.h"

namespace Nodes {

namespace {

// Outside of a running system there is nothing to protect.
bool lacksUsers(const ConfigNode &node)
{
    const systemCore *core = node.GetCore();
    return core && core->IsMeantToHaveUsers();
}

} // namespace

const systemAuthentication *UsersFor(const ConfigNode &node)
{
    const BasicStation *station = node.GetStation();
    const systemAuthentication *own = station ? station->GetSystemAuthentication() : nullptr;
    const systemCore *core = node.GetCore();
    return own || !core ? own : core->GetSystemAuthentication();
}

std::string UserNameFor(const ConfigNode &node)
{
    const systemAuthentication *users = UsersFor(node);
    return users ? users->GetCurrentUserName() : std::string();
}

Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node)
{
    const systemAuthentication *users = UsersFor(node);
    const bool isAllowed = users ? IsGranted(users->CheckAccess(privilege, node.GetNodeLink()))
                                 : privilege == PrivilegeView || !lacksUsers(node);
    return isAllowed ? Result() : Result(&node, Result::AccessDenied);
}

bool IsForbiddenToView(const ConfigNode &node)
{
    const systemCore *core = node.GetCore();
    if (!core || core->GetWorkMode() != WorkModeRuntime)
        return false;
    const systemAuthentication *users = UsersFor(node);
    return users && users->CheckAccess(PrivilegeView, node.GetNodeLink()) == PrivModeDenied;
}

void AppendDemands(const NodeLinks &actions, AccessDemands &demands)
{
    for (const NodeLink &link : actions) {
        if (const auto *action = dynamic_cast<const BasicAction *>(link.GetNode()))
            action->CollectDemands(demands);
    }
}

enAccessDeniedAction DenialOf(const AccessDemands &demands)
{
    for (const AccessDemand &demand : demands) {
        const ConfigNode *node = demand.node.GetNode();
        if (!node || CheckAccess(demand.privilege, *node))
            continue;
        const systemAuthentication *users = UsersFor(*node);
        return users ? users->GetAccessDeniedAction() : AccessDeniedRefuse;
    }
    return AccessDeniedRefuse;
}

Result DemandAccess(enPrivilegeType privilege, const ConfigNode &node, const std::string &what)
{
    const Result access = CheckAccess(privilege, node);
    if (!access)
        node.StoreMessage(LevelSecurity, "Отклонено, нет прав: " + what, node.GetNodeLink());
    return access;
}

} // namespace Nodes
