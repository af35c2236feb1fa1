#include "nodes/system/CoreAccess.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemCore.h"

namespace Nodes {

const systemAuthentication *CoreAccess::usersFor(const ConfigNode &node) const
{
    const BasicStation *station = node.GetStation();
    const systemAuthentication *own = station ? station->GetSystemAuthentication() : nullptr;
    return own ? own : m_core.GetSystemAuthentication();
}

bool CoreAccess::Allows(enPrivilegeType privilege, const ConfigNode &node) const
{
    if (const systemAuthentication *users = usersFor(node))
        return IsGranted(users->CheckAccess(privilege, node.GetNodeLink()));
    // A slip in the project must not open the plant to everybody.
    return privilege == PrivilegeView || !m_core.IsMeantToHaveUsers();
}

bool CoreAccess::ForbidsToView(const ConfigNode &node) const
{
    if (m_core.GetWorkMode() != WorkModeRuntime)
        return false;
    const systemAuthentication *users = usersFor(node);
    return users && users->CheckAccess(PrivilegeView, node.GetNodeLink()) == PrivModeDenied;
}

std::string CoreAccess::GetUserName(const ConfigNode &node) const
{
    const systemAuthentication *users = usersFor(node);
    return users ? users->GetCurrentUserName() : std::string();
}

enAccessDeniedAction CoreAccess::GetAccessDeniedAction(const ConfigNode &node) const
{
    const systemAuthentication *users = usersFor(node);
    return users ? users->GetAccessDeniedAction() : AccessDeniedRefuse;
}

} // namespace Nodes
