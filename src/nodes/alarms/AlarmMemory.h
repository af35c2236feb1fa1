#pragma once

#include "nodes/values/Timestamp.h"

#include <tuple>

namespace Nodes {

/// What of an alarm survives a restart of the station.
struct AlarmMemory
{
    bool isActive = false;
    bool isAcked = true;
    bool isSuppressed = false;
    bool isOutOfService = false;
    Timestamp shelvedUntil = 0; ///< wall time; 0: not shelved
    Timestamp changed = 0;      ///< wall time of the last change of state
    unsigned long occurrence = 0;

    bool operator==(const AlarmMemory &o) const { return fields() == o.fields(); }
    /// True when a fresh alarm would behave the same.
    bool isBlank() const
    {
        return !isActive && isAcked && !isSuppressed && !isOutOfService && shelvedUntil == 0;
    }

private:
    std::tuple<bool, bool, bool, bool, Timestamp, Timestamp, unsigned long> fields() const
    {
        return {isActive, isAcked, isSuppressed, isOutOfService, shelvedUntil, changed, occurrence};
    }
};

} // namespace Nodes
