#pragma once

#include "apps/common/history/SignalProfile.h"
#include "apps/common/history/Stretches.h"

#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <string_view>

namespace Host {

/// What all generated signals of one plant have in common. Plain value.
struct PlantDays
{
    std::uint64_t seed = 1;
    Nodes::Timestamp end = 0; ///< where live values are to go on: there all are near their mean
    Nodes::Timestamp utcOffset = 0; ///< of the plant's local time, microseconds
};

/// A value for any moment of a signal's generated past, the same whenever it is asked for.
class SignalCurve
{
public:
    /// Signals whose names begin alike, up to the first '.', go down together.
    SignalCurve(const SignalProfile &profile, const PlantDays &days, std::string_view name);

    /// Rounded to its decimals; 0 and 1 for a logical.
    double at(Nodes::Timestamp time) const;

private:
    double plain(Nodes::Timestamp time) const;
    double process(Nodes::Timestamp time) const;
    double setpoint(Nodes::Timestamp time) const;
    bool hasTurn(Nodes::Timestamp time) const;
    double weather(Nodes::Timestamp time) const;
    double settling(Nodes::Timestamp time) const;

    SignalProfile m_profile;
    PlantDays m_days;
    std::uint64_t m_seed;
    Stretches m_down;
    Stretches m_leaves;
    double m_scale; // 10^decimals
};

} // namespace Host
