#include "nodes/actions/kinds/actionAuthUser.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionAuthUser::Kind()
{
    return KindBuilder::For<actionAuthUser>("actionAuthUser", "Log in", "Вход пользователя")
        .Property<&actionAuthUser::m_user>(Prop::User, "User", "Пользователь")
        .Refers({NodeType::TypeSecurity})
        .Property<&actionAuthUser::m_isLogout>(Prop::Logout, "Log out", "Выход");
}

} // namespace Nodes
