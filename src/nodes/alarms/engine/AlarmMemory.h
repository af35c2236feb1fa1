#pragma once

#include "nodes/values/Timestamp.h"

#include <tuple>

namespace Nodes {

/// What of an alarm survives a restart of the station. Times are of the wall clock.
struct AlarmMemory
{
    bool isActive = false;
    bool isAcked = true;
    bool isSuppressed = false;
    bool isOutOfService = false;
    Timestamp shelvedUntil = 0; ///< 0: not shelved
    Timestamp changed = 0;      ///< last change of state
    unsigned long occurrence = 0;
    // Of that occurrence; 0: not yet.
    Timestamp raised = 0;
    Timestamp acknowledged = 0;
    Timestamp returned = 0;
    bool isSeen = true; ///< it was shown to operators, not hidden from its beginning

private:
    auto fields() const
    {
        return std::tie(isActive, isAcked, isSuppressed, isOutOfService, shelvedUntil, changed,
                        occurrence, raised, acknowledged, returned, isSeen);
    }

public:
    bool operator==(const AlarmMemory &o) const { return fields() == o.fields(); }
    bool operator!=(const AlarmMemory &o) const { return !(*this == o); }
    /// True when a fresh alarm would behave the same.
    bool isBlank() const
    {
        return !isActive && isAcked && !isSuppressed && !isOutOfService && shelvedUntil == 0;
    }
};

} // namespace Nodes
