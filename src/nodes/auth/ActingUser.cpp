#include "nodes/auth/ActingUser.h"

#include "nodes/auth/systemAuthentication.h"

#include <utility>

namespace Nodes {

namespace {

thread_local const ActingUser *current = nullptr;

} // namespace

ActingScope::ActingScope(ActingUser user)
    : m_user(std::move(user)), m_outer(std::exchange(current, m_user.users ? &m_user : nullptr))
{
}

ActingScope::~ActingScope()
{
    current = m_outer;
}

const ActingUser *ActingScope::Current()
{
    return current;
}

const ActingUser *ActingScope::Of(const systemAuthentication &users)
{
    return current && current->users == users.GetId() ? current : nullptr;
}

} // namespace Nodes
