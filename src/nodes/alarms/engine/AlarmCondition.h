#pragma once

#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <memory>

namespace Nodes {

class SignalValue;

/// What a value says about an alarm.
enum class AlarmVerdict {
    Unknown, ///< the value cannot be trusted or compared: the alarm stays as it is
    Normal,
    Alarm
};

/// What there is to judge.
struct AlarmInput
{
    const SignalValue &value;
    const SignalValue &reference; ///< of the signal compared with; empty where there is none
    bool isActive;                ///< the alarm is up, for conditions with a deadband
    Timestamp now; ///< steady, microseconds; never less than that of the input before
};

/// Numbers of a condition that can be changed while it watches.
struct AlarmThreshold
{
    double limit = 0;
    double deadband = 0;
};

/// Judges the values of one alarm, made from the alarm's settings. What looks at several values
/// keeps them, so whoever judges works on a clone of his own. One thread at a time.
class AlarmCondition
{
public:
    static constexpr Timestamp Never = INT64_MAX;

    virtual ~AlarmCondition() = default;

    virtual std::unique_ptr<AlarmCondition> Clone() const = 0;
    virtual AlarmVerdict Judge(const AlarmInput &input) = 0;
    /// Steady time, later than that of the last judgement, at which the same value may be judged
    /// differently.
    virtual Timestamp NextLook() const { return Never; }
    /// Null when there are no such numbers.
    virtual const AlarmThreshold *GetThreshold() const { return nullptr; }
    virtual void SetThreshold(const AlarmThreshold &) {}
};

} // namespace Nodes
