#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Changes who is logged in: lets the operator choose and give a password, logs in one configured
/// user, or logs out.
class NODES_EXPORT actionAuthUser : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10009);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> User{16090, "user"};
        static constexpr PropertyId<bool> Logout{16091, "logout"};
    };

    static KindInfo Kind();

    /// The user to log in without asking; empty: the operator is asked.
    const NodeLink &GetUser() const { return m_user; }
    /// Logs the current user out; a user to log in is then ignored.
    bool isLogout() const { return m_isLogout; }

private:
    NodeLink m_user;
    bool m_isLogout = false;
};

} // namespace Nodes
