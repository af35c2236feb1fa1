#include "nodes/auth/AccessCheck.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/BasicStation.h"

namespace Nodes {

Result CheckAccess(enPrivilegeType privilege, const ConfigNode &node)
{
    const BasicStation *station = node.GetStation();
    const systemAuthentication *users = station ? station->GetSystemAuthentication() : nullptr;
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
