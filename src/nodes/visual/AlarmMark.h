#pragma once

#include "nodes/events/BasicEvent.h"
#include "nodes/visual/LimitZones.h"

#include <string>

namespace Nodes {

class BasicSignal;
class SignalValue;

/// How the alarms of a signal stand, in one sign beside its value: that of the most urgent alarm.
/// Plain value.
struct NODES_EXPORT AlarmMark
{
    AlarmState state = AlarmState::Normal;            ///< Normal: no sign
    LimitZones::enZone zone = LimitZones::ZoneNormal; ///< of a limit alarm
    bool isAlarm = false;                             ///< else a warning
    std::string token; ///< "LL", "L", "H", "HH", "!" for alarms of other kinds

    /// As the alarm system has it, whatever kind the alarms are and wherever they stand. Active
    /// ones go before returned ones, those before hidden ones; then priority counts. Where a
    /// project has no alarm system, the place of `value` between the limits. GUI thread.
    static AlarmMark Of(const BasicSignal &signal, const SignalValue &value);
    /// The same, of the signal's value of now.
    static AlarmMark Of(const BasicSignal &signal);
    /// Of a value between limits that nobody has to acknowledge.
    static AlarmMark OfZone(LimitZones::enZone zone);

    bool isActive() const
    {
        return state == AlarmState::ActiveUnacked || state == AlarmState::ActiveAcked;
    }
    /// Operators took it off their list for a while.
    bool isHidden() const
    {
        return state == AlarmState::Shelved || state == AlarmState::Suppressed ||
               state == AlarmState::OutOfService;
    }
};

} // namespace Nodes
