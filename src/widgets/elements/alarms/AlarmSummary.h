#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

namespace Widgets {

/// How several alarms stand, in one sign: that of the most urgent one. A value.
struct WIDGETS_EXPORT AlarmSummary
{
    /// Normal: no sign. One that awaits its reset counts as acknowledged.
    Nodes::AlarmState state = Nodes::AlarmState::Normal;
    int priority = 0; ///< 1 (highest) to 4

    /// Active alarms go before returned ones, those before hidden ones, then priority counts. That
    /// one was acknowledged does not hide that another was not.
    void add(const Nodes::BasicEvent &alarm);

    bool isActive() const
    {
        return state == Nodes::AlarmState::ActiveUnacked || state == Nodes::AlarmState::ActiveAcked;
    }
    /// Shelved, suppressed or out of service, all of them.
    bool isHidden() const;
    bool blinks() const { return state == Nodes::AlarmState::ActiveUnacked; }

    bool operator==(const AlarmSummary &o) const
    {
        return state == o.state && priority == o.priority;
    }
    bool operator!=(const AlarmSummary &o) const { return !(*this == o); }
};

} // namespace Widgets
