#pragma once

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/values/SignalValue.h"

namespace Nodes {

/// What conditions on numbers have in common.
class ThresholdCondition : public AlarmCondition
{
public:
    explicit ThresholdCondition(const AlarmThreshold &threshold) : m_threshold(threshold) {}

    const AlarmThreshold *GetThreshold() const override { return &m_threshold; }
    void SetThreshold(const AlarmThreshold &threshold) override { m_threshold = threshold; }

protected:
    static bool isTrusted(const SignalValue &value)
    {
        const Quality quality = value.GetQuality();
        return quality != Quality::Bad && quality != Quality::Stale;
    }
    /// `number` counts upwards into the alarm.
    AlarmVerdict compare(double number, double limit, bool isActive) const
    {
        const bool isBeyond =
            number >= limit || (isActive && number > limit - m_threshold.deadband);
        return isBeyond ? AlarmVerdict::Alarm : AlarmVerdict::Normal;
    }

    AlarmThreshold m_threshold;
};

} // namespace Nodes
