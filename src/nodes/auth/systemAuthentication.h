#pragma once

#include "nodes/auth/ActingUser.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/model/services/AuthPriv.h"
#include "nodes/values/Connection.h"

#include <functional>
#include <memory>

namespace Nodes {

/// Users of a station: who is logged in and what they may do. Users and roles are nodes below it
/// or anywhere in the project. Log-in and log-out on the GUI thread; CheckAccess on any thread.
class NODES_EXPORT systemAuthentication : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x7003);
    struct Prop
    {
        static constexpr PropertyId<int> AccessDenied{7301, "accessDenied"};
        static constexpr PropertyId<NodeLink> GuestRole{7302, "guestRole"};
        static constexpr PropertyId<int> LogoutAfter{7303, "logoutAfter"};
    };

    systemAuthentication();
    ~systemAuthentication() override;
    static KindInfo Kind();

    /// Logs the user in without a password: for users configured as such and for log-in actions
    /// that name one. Users that have a password are refused.
    [[nodiscard]] Result Authenticate(const NodeLink &user);
    /// Checks the password against the stored Argon2id hash. From the third failure in a row the
    /// answer is delayed: LimitExceeded is returned until the pause (1, 2, 4, ... 60 s) is over.
    /// Every attempt is journalled. Refusals carry the code 1317 when the link names no user, 1318
    /// for a wrong password or a user who is not enabled. A user configured to need no password
    /// gives an empty one. Takes some 0.1 s of work on the calling thread.
    [[nodiscard]] Result Authenticate(const NodeLink &user, const std::string &password);
    /// Seconds until the user's next attempt is looked at; 0: at once. GUI thread.
    int GetPause(const NodeLink &user) const;
    /// Nothing happens when nobody is logged in. `reason` (Russian, may be "") is journalled.
    void Logout(const std::string &reason = {});
    /// Empty when nobody is logged in.
    NodeLink GetCurrentUser() const;
    /// "" when nobody is logged in. Inside an ActingScope the name of who acts. Any thread.
    std::string GetCurrentUserName() const;
    /// Who is logged in, for what is to be done later. Any thread.
    ActingUser GetActingUser() const;

    /// Whether the current user may do `privilege` with `node`: the rule nearest to the node
    /// decides, at equal distance a refusal wins. With nobody logged in the guest role's rules
    /// count. Inside an ActingScope that user's rules as they are now: guests' once the user is
    /// disabled or deleted, and no other thread than the GUI's is told of more than the current
    /// user's. Any thread; changes of users, rules and the tree count once the GUI thread has asked
    /// or somebody has logged in or out.
    enNodePrivMode CheckAccess(AuthPriv privilege, const NodeLink &node) const;
    enAccessDeniedAction GetAccessDeniedAction() const;
    /// Seconds without operator input after which the user is logged out; 0: never.
    int GetLogoutAfter() const { return m_logoutAfter; }

    /// Argon2id hash in its own text form, salted; "" when memory is short.
    static std::string HashPassword(const std::string &password);

    /// Announces log-ins and log-outs with the new user's link (empty on log-out). A user who is
    /// disabled or deleted is logged out. GUI thread.
    Connection ConnectUserChanged(std::function<void(NodeLink)> slot);

    Result Start() override;

protected:
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;

private:
    struct State;
    struct Attempt;

    Result enter(const Attempt &attempt);
    Result refuse(const Attempt &attempt, const std::string &why, Result answer);
    void journal(const Attempt &attempt, const std::string &text, const std::string &user) const;
    void changeUser(const NodeLink &user);
    void leave(const std::string &reason);

    int m_accessDeniedAction = AccessDeniedRefuse;
    int m_logoutAfter = 0;
    NodeLink m_guestRole;
    std::unique_ptr<State> m_state;
};

} // namespace Nodes
