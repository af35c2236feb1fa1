#include "nodes/alarms/engine/AlarmMemory.h"

namespace Nodes {

AlarmState AlarmMemory::State() const
{
    if (isOutOfService)
        return AlarmState::OutOfService;
    if (isSuppressed || isSuppressedByDesign)
        return AlarmState::Suppressed;
    if (shelvedUntil != 0)
        return AlarmState::Shelved;
    if (isActive)
        return isAcked ? AlarmState::ActiveAcked : AlarmState::ActiveUnacked;
    if (!isAcked)
        return AlarmState::ReturnedUnacked;
    return isResetDue ? AlarmState::AwaitingReset : AlarmState::Normal;
}

} // namespace Nodes
