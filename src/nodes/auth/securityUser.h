#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// A person who may log in. The node's name is the login name.
class NODES_EXPORT securityUser : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x20002);
    struct Prop
    {
        static constexpr PropertyId<std::string> FullName{6101, "fullName"};
        static constexpr PropertyId<std::string> PasswordHash{6102, "passwordHash"};
        static constexpr PropertyId<NodeLinks> Roles{6103, "roles"};
        static constexpr PropertyId<bool> Enabled{6104, "enabled"};
        static constexpr PropertyId<bool> Passwordless{6105, "passwordless"};
    };

    static KindInfo Kind();

    const std::string &GetFullName() const { return m_fullName; }
    /// Argon2id text; "" when the user has no password.
    const std::string &GetPasswordHash() const { return m_passwordHash; }
    const NodeLinks &GetRoles() const { return m_roles; }
    /// A user that is not enabled cannot log in.
    bool isEnabled() const { return m_isEnabled; }
    /// Log-in without a password is allowed, provided that none is set.
    bool isPasswordless() const { return m_isPasswordless && m_passwordHash.empty(); }

    void Validate(ValidationResults &results) const override;

private:
    std::string m_fullName;
    std::string m_passwordHash;
    NodeLinks m_roles;
    bool m_isEnabled = true;
    bool m_isPasswordless = false;
};

} // namespace Nodes
