#pragma once

#include <vector>

namespace Nodes {

enum enPrivilegeType {
    PrivilegeView = 1,
    PrivilegeWrite = 2,
    PrivilegeOpen = 3,
    PrivilegeClose = 4,
    PrivilegeCommand = 5,
    PrivilegeAcknowledge = 6,
    PrivilegeLaunch = 7,
    PrivilegeShelve = 8,
    PrivilegeConfigure = 9
};

/// Whether the current user may do something with a node; 1 and 2 grant access.
enum enNodePrivMode {
    PrivModeDenied = 0,    ///< a rule forbids it
    PrivModeGranted = 1,   ///< a rule for this node or one above grants it
    PrivModeUnchecked = 2, ///< no users, no roles in the project: everybody may do everything
    PrivModeNoRule = 3     ///< no rule speaks of it: not granted
};

/// What a caller does when access is refused.
enum enAccessDeniedAction { AccessDeniedRefuse = 0, AccessDeniedDisable = 1, AccessDeniedHide = 2 };

/// One privilege that a node can demand.
class AuthPriv
{
public:
    AuthPriv(enPrivilegeType type) : m_type(type) {}
    enPrivilegeType GetType() const { return m_type; }
    bool operator==(const AuthPriv &other) const { return m_type == other.m_type; }

private:
    enPrivilegeType m_type;
};

using AuthPrivArray = std::vector<AuthPriv>;

/// True for the answers that grant access.
constexpr bool IsGranted(enNodePrivMode mode)
{
    return mode == PrivModeGranted || mode == PrivModeUnchecked;
}

} // namespace Nodes
