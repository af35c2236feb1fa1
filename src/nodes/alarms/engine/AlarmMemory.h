#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/engine/AlarmDeeds.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/values/Timestamp.h"

#include <memory>
#include <tuple>

namespace Nodes {

/// What of an alarm survives a restart of the station. Times are of the wall clock.
struct NODES_EXPORT AlarmMemory
{
    bool isActive = false;
    bool isAcked = true;
    bool isResetDue = false; ///< latched: its condition is gone, nobody has reset it yet
    bool isSuppressed = false;
    bool isSuppressedByDesign = false;
    bool isOutOfService = false;
    Timestamp shelvedUntil = 0; ///< 0: not shelved
    Timestamp changed = 0;      ///< last change of state
    unsigned long occurrence = 0;
    // Of that occurrence; 0: not yet.
    Timestamp raised = 0;
    Timestamp acknowledged = 0;
    Timestamp returned = 0;
    bool isSeen = true;     ///< it was shown to operators, not hidden from its beginning
    bool isFirstUp = false; ///< it came first in its group, see FirstUpGroup
    int reminders = 0;      ///< how often it was announced again while nobody acknowledged it
    /// Null: none. Shared, because the state is copied with every value and these hardly change.
    std::shared_ptr<const AlarmDeeds> deeds;

    const AlarmDeeds &Deeds() const
    {
        static const AlarmDeeds none;
        return deeds ? *deeds : none;
    }
    /// Keeps a changed copy of the deeds.
    template <class Edit> void EditDeeds(Edit edit)
    {
        AlarmDeeds edited = Deeds();
        edit(edited);
        deeds = edited.isEmpty() ? nullptr : std::make_shared<const AlarmDeeds>(std::move(edited));
    }
    AlarmState State() const;
    /// Shelved, suppressed or out of service.
    bool isHidden() const
    {
        return isOutOfService || isSuppressed || isSuppressedByDesign || shelvedUntil != 0;
    }

private:
    auto fields() const
    {
        return std::tie(isActive, isAcked, isResetDue, isSuppressed, isSuppressedByDesign,
                        isOutOfService, shelvedUntil, changed, occurrence, raised, acknowledged,
                        returned, isSeen, isFirstUp, reminders);
    }

public:
    bool operator==(const AlarmMemory &o) const
    {
        return fields() == o.fields() && (deeds == o.deeds || Deeds() == o.Deeds());
    }
    bool operator!=(const AlarmMemory &o) const { return !(*this == o); }
    /// True when a fresh alarm would behave the same.
    bool isBlank() const
    {
        return !isActive && isAcked && !isResetDue && !isSuppressed && !isSuppressedByDesign &&
               !isOutOfService && shelvedUntil == 0 && Deeds().isEmpty();
    }
};

} // namespace Nodes
