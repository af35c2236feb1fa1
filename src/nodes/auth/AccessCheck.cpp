#include "nodes/auth/AccessCheck.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemCore.h"

namespace Nodes {

const systemAuthentication *UsersFor(const ConfigNode &node)
{
    const BasicStation *station = node.GetStation();
    const systemAuthentication *own = station ? station->GetSystemAuthentication() : nullptr;
    const systemCore *core = node.GetCore();
    return own || !core ? own : core->GetSystemAuthentication();
}

Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node)
{
    const systemAuthentication *users = UsersFor(node);
    const bool isAllowed = !users || IsGranted(users->CheckAccess(privilege, node.GetNodeLink()));
    return isAllowed ? Result() : Result(&node, Result::AccessDenied);
}

Result DemandAccess(enPrivilegeType privilege, const ConfigNode &node, const std::string &what)
{
    const Result access = CheckAccess(privilege, node);
    if (!access)
        node.StoreMessage(LevelSecurity, "Отклонено, нет прав: " + what, node.GetNodeLink());
    return access;
}

} // namespace Nodes
