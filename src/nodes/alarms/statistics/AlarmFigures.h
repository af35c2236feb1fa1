#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Timestamp.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Nodes {

/// What one alarm did in a period. Times and durations in microseconds.
struct AlarmCount
{
    NodeLink alarm;
    std::string source; ///< its path when it last came
    std::string text;
    int priority = 0;
    std::uint64_t raised = 0;
    Timestamp lastRaised = 0;
    std::uint64_t chattering = 0;  ///< raisings that were the third or a later one within a minute
    std::uint64_t fleeting = 0;    ///< occurrences that went by themselves within seconds
    Timestamp longestStanding = 0; ///< longest occurrence beyond a day; 0: there was none
    bool isStanding = false;       ///< the one that reaches the period's end is beyond a day
};

/// A shift, as far as it lies in a period.
struct AlarmShift
{
    Timestamp begin = 0; ///< inclusive
    Timestamp end = 0;   ///< exclusive
    std::string name;
    std::uint64_t raised = 0;
};

/// How the alarms of a period were, see AlarmStatistics. Plain value.
struct AlarmFigures
{
    static constexpr Timestamp Bin = Timestamp(600) * 1000000; ///< ten minutes
    static constexpr int Priorities = 4;

    Timestamp begin = 0; ///< inclusive
    Timestamp end = 0;   ///< exclusive

    std::uint64_t raised = 0;
    std::vector<std::uint32_t>
        perBin; ///< raised in each ten minutes from begin; the last may be cut
    double meanPerBin = 0;
    std::uint32_t mostPerBin = 0;
    Timestamp mostAt = 0; ///< where those ten minutes began; 0: nothing was raised

    int floodAbove = 10; ///< see FloodMeter::Limits
    int floodBelow = 5;
    Timestamp flood = 0; ///< duration of all floods
    Timestamp longestFlood = 0;
    std::uint64_t floods = 0; ///< that began in the period
    double floodShare = 0;    ///< of the period, 0 to 1

    /// Of the priorities 1 to 4, at 0 to 3.
    std::array<std::uint64_t, Priorities> perPriority{};

    /// Every alarm that was raised, or stood beyond a day; those raised most often first, equal
    /// ones by source.
    std::vector<AlarmCount> alarms;
    double topTenShare = 0; ///< of what was raised, 0 to 1

    std::size_t chatteringAlarms = 0;
    std::size_t fleetingAlarms = 0;
    std::size_t standingAlarms = 0; ///< that stood beyond a day, be it over or not
    std::size_t activeAtEnd = 0;    ///< shown to operators as present at the end

    // From being shown to the acknowledgement; of acknowledgements in the period.
    std::uint64_t acknowledged = 0;
    Timestamp acknowledgeMean = 0;
    Timestamp acknowledgeMedian = 0;
    Timestamp acknowledgeMost = 0; ///< 95 % were acknowledged within that
    std::uint64_t unacknowledged =
        0; ///< raised in the period, over or not, never acknowledged in it

    std::vector<AlarmShift> shifts; ///< in the order of their times; none where they are not known

    std::uint64_t foreign = 0; ///< entries of other projects and stations, which are not in here
};

} // namespace Nodes
