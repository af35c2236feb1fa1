#pragma once

#include "nodes/values/Timestamp.h"

#include <map>

namespace Nodes {

/// Counts failed log-ins in a row for each user id and imposes pauses from the third on: 1, 2, 4
/// and so on up to 60 s. Times are steady microseconds. One thread.
class LoginGuard
{
public:
    /// Time still to wait, 0 when an attempt is welcome.
    Timestamp Pause(unsigned long user, Timestamp now) const;
    void NoteFailure(unsigned long user, Timestamp now);
    void NoteSuccess(unsigned long user) { m_failures.erase(user); }

private:
    struct Failures
    {
        int count = 0;
        Timestamp openAt = 0;
    };

    std::map<unsigned long, Failures> m_failures;
};

} // namespace Nodes
