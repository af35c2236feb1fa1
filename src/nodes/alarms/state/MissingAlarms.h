#pragma once

#include "nodes/alarms/state/AlarmStateStore.h"

#include <functional>

namespace Nodes {

/// Decides on kept states whose alarm is not there: an older or broken project may be a slip, and
/// what was set aside by hand must be there again with the right one.
class MissingAlarms
{
public:
    using Put = std::function<void(unsigned long node, StoredAlarm state)>;
    using Tell = std::function<void(const std::string &text)>; ///< Russian, for the journal

    MissingAlarms(Put put, Tell tell) : m_put(std::move(put)), m_tell(std::move(tell)) {}

    /// Keeps the state for 90 days from when it is first found missing, then forgets it.
    void Keep(unsigned long node, const StoredAlarm &stored, Timestamp now) const;
    /// True when the state is that of a deleted node, whose number another alarm has got; it is
    /// then forgotten. A renamed node never was missing.
    bool IsAnothers(unsigned long node, const StoredAlarm &stored, const std::string &path) const;

private:
    void forget(unsigned long node, const StoredAlarm &stored, const std::string &why) const;

    Put m_put;
    Tell m_tell;
};

} // namespace Nodes
