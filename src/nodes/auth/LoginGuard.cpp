#include "nodes/auth/LoginGuard.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr int freeFailures = 2;
constexpr int longestPause = 60; // s

Timestamp pauseAfter(int failures)
{
    const int doublings = std::min(failures - freeFailures - 1, 6);
    return Timestamp(std::min(1 << doublings, longestPause)) * 1000000;
}

} // namespace

Timestamp LoginGuard::Pause(unsigned long user, Timestamp now) const
{
    const auto found = m_failures.find(user);
    return found == m_failures.end() ? 0 : std::max<Timestamp>(found->second.openAt - now, 0);
}

void LoginGuard::NoteFailure(unsigned long user, Timestamp now)
{
    Failures &failures = m_failures[user];
    if (++failures.count > freeFailures)
        failures.openAt = now + pauseAfter(failures.count);
}

} // namespace Nodes
