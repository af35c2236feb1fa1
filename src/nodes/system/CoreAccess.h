#pragma once

#include "nodes/model/services/AccessGuard.h"

namespace Nodes {

class systemAuthentication;
class systemCore;

/// Rights in a project that a core runs: each node is guarded by the users of its station, else by
/// those of the project. Any thread.
class CoreAccess : public AccessGuard
{
public:
    explicit CoreAccess(const systemCore &core) : m_core(core) {}

    bool Allows(enPrivilegeType privilege, const ConfigNode &node) const override;
    bool ForbidsToView(const ConfigNode &node) const override;
    std::string GetUserName(const ConfigNode &node) const override;
    enAccessDeniedAction GetAccessDeniedAction(const ConfigNode &node) const override;

private:
    const systemAuthentication *usersFor(const ConfigNode &node) const;

    const systemCore &m_core;
};

} // namespace Nodes
