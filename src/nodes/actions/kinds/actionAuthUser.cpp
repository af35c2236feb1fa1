#include "nodes/actions/kinds/actionAuthUser.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionAuthUser::Kind()
{
    return KindBuilder::For<actionAuthUser>(NodeType::enNodeSubtype(0x10009), "actionAuthUser",
                                            "Log in", "Вход пользователя")
        .Property<&actionAuthUser::m_user>(16090, "user", "User", "Пользователь")
        .Refers({NodeType::TypeSecurity})
        .Property<&actionAuthUser::m_isLogout>(16091, "logout", "Log out", "Выход");
}

} // namespace Nodes
