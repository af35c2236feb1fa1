#include "nodes/auth/securityGrant.h"

#include "nodes/auth/securityRole.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

#include <algorithm>

namespace Nodes {

KindInfo securityGrant::Kind()
{
    return KindBuilder::For<securityGrant>("grant", "Access rule", "Правило доступа")
        .Property<&securityGrant::m_privileges>(Prop::Privileges, "Privileges", "Права")
        .Hint("privileges")
        .Property<&securityGrant::m_scope>(Prop::Scope, "Scope", "Область действия")
        .Hint("any")
        .Property<&securityGrant::m_mode>(Prop::Mode, "Mode", "Действие")
        .Choice(ModeAllow, "allow", "Разрешить")
        .Choice(ModeDeny, "deny", "Запретить");
}

bool securityGrant::isMisread(std::string_view key) const
{
    const Attributes &foreign = GetForeignAttributes();
    return std::any_of(foreign.begin(), foreign.end(),
                       [key](const auto &attribute) { return attribute.first == key; });
}

bool securityGrant::isDenial() const
{
    return m_mode == ModeDeny || isMisread("mode");
}

PrivilegeSet securityGrant::GetPrivileges() const
{
    if (!isDenial() && isMisread("scope"))
        return PrivilegeSet();
    std::string unknown;
    const PrivilegeSet known = PrivilegeSet::FromText(m_privileges, &unknown);
    return isDenial() && !unknown.empty() ? PrivilegeSet::All() : known;
}

void securityGrant::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const std::string which = "Правило доступа «" + GetPath() + "»: ";
    const Result invalid(this, Result::InvalidArgument, m_privileges);
    std::string unknown;
    const PrivilegeSet known = PrivilegeSet::FromText(m_privileges, &unknown);
    if (!unknown.empty())
        results.Add(GetNodeLink(), invalid,
                    which + "неизвестные права: " + unknown +
                        ". Допустимы view, write, open, close, command, acknowledge, launch, "
                        "shelve, configure и all.");
    else if (known.isEmpty())
        results.Add(GetNodeLink(), invalid, which + "права не указаны, правило не действует.");
    if (!dynamic_cast<const securityRole *>(GetParent()))
        results.Add(GetNodeLink(), invalid,
                    which + "находится вне роли и не действует. Перенесите его в роль.");
}

} // namespace Nodes
