#pragma once

#include <optional>
#include <tuple>

namespace Nodes {

/// Numbers of an alarm that can be changed at run time; absent: not spoken of, or the alarm has no
/// such number.
struct AlarmTuning
{
    std::optional<double> limit;
    std::optional<double> deadband; ///< in the limit's units
    std::optional<int> onDelay;     ///< ms
    std::optional<int> offDelay;    ///< ms

    bool isEmpty() const { return !limit && !deadband && !onDelay && !offDelay; }
    bool operator==(const AlarmTuning &o) const
    {
        return std::tie(limit, deadband, onDelay, offDelay) ==
               std::tie(o.limit, o.deadband, o.onDelay, o.offDelay);
    }
    bool operator!=(const AlarmTuning &o) const { return !(*this == o); }
};

} // namespace Nodes
