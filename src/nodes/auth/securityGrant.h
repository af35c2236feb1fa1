#pragma once

#include "nodes/auth/PrivilegeSet.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// One rule of a role: allows or denies privileges with a node and everything below it, or with
/// the whole project. A rule for a nearer node outweighs it.
class NODES_EXPORT securityGrant : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x20003);
    struct Prop
    {
        static constexpr PropertyId<std::string> Privileges{6301, "privileges"};
        static constexpr PropertyId<NodeLink> Scope{6302, "scope"};
        static constexpr PropertyId<int> Mode{6303, "mode"};
    };

    static KindInfo Kind();

    /// What the rule speaks of. A denial with words that name no privilege covers every privilege,
    /// a permission whose scope did not read covers none: a slip of the pen must not open what was
    /// to be closed.
    PrivilegeSet GetPrivileges() const;
    /// Empty: the whole project.
    const NodeLink &GetScope() const { return m_scope; }
    /// A mode that did not read counts as denial.
    bool isDenial() const;

    void Validate(ValidationResults &results) const override;

private:
    bool isMisread(std::string_view key) const;

    enum Mode { ModeAllow = 0, ModeDeny = 1 };

    std::string m_privileges;
    NodeLink m_scope;
    int m_mode = ModeAllow;
};

} // namespace Nodes
