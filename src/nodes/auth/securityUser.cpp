#include "nodes/auth/securityUser.h"

#include "nodes/auth/PasswordHash.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo securityUser::Kind()
{
    return KindBuilder::For<securityUser>("user", "User", "Пользователь")
        .Property<&securityUser::m_fullName>(Prop::FullName, "Full name", "Полное имя")
        .Property<&securityUser::m_passwordHash>(Prop::PasswordHash, "Password", "Пароль")
        .Secret()
        .Property<&securityUser::m_roles>(Prop::Roles, "Roles", "Роли")
        .Refers({NodeType::TypeSecurity})
        .Property<&securityUser::m_isEnabled>(Prop::Enabled, "Enabled", "Разрешён")
        .Property<&securityUser::m_isPasswordless>(Prop::Passwordless, "Log-in without password",
                                                   "Вход без пароля");
}

void securityUser::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const std::string who = "Пользователь «" + GetPath() + "»: ";
    if (!m_passwordHash.empty() && !IsPasswordHash(m_passwordHash))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "passwordHash"),
                    who + "пароль записан не в виде хеша Argon2id, войти нельзя. Задайте пароль "
                          "заново.");
    if (m_passwordHash.empty() && !m_isPasswordless && m_isEnabled)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "passwordHash"),
                    who + "пароль не задан, войти нельзя. Задайте пароль или разрешите вход без "
                          "пароля.");
}

} // namespace Nodes
