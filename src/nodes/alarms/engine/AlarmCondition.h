#pragma once

namespace Nodes {

class SignalValue;

/// What a value says about an alarm.
enum class AlarmVerdict {
    Unknown, ///< the value cannot be trusted or compared: the alarm stays as it is
    Normal,
    Alarm
};

/// Judges values for one alarm. Immutable copy of the alarm's settings, used on any thread.
class AlarmCondition
{
public:
    virtual ~AlarmCondition() = default;

    /// `isActive` tells whether the alarm is up, for conditions with a deadband.
    virtual AlarmVerdict Judge(const SignalValue &value, bool isActive) const = 0;
};

} // namespace Nodes
