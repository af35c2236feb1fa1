#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/AlarmSettings.h"
#include "nodes/alarms/statistics/AlarmFigures.h"
#include "nodes/alarms/trial/SampleVisits.h"
#include "nodes/values/Result.h"

#include <atomic>
#include <functional>
#include <vector>

namespace Nodes {

/// Tries several settings of one alarm on the same samples, in one pass over them; see AlarmTrial.
/// Plain value, for a thread of the caller's own.
struct NODES_EXPORT AlarmTrials
{
    std::vector<AlarmSettings> candidates;
    Timestamp begin = 0; ///< inclusive
    Timestamp end = 0;   ///< exclusive
    SampleVisit samples;
    /// Of the signal that the condition compares with; empty where there is none. Kept in memory, a
    /// few million samples at most: LimitExceeded beyond that.
    SampleVisit reference;
    /// Told now and then how far it is, 0 to 1; may be empty.
    std::function<void(double)> onProgress;

    struct Outcome
    {
        std::vector<AlarmFigures> figures; ///< of each candidate
        std::uint64_t samples = 0;         ///< in the period
        Timestamp first = 0;               ///< of them; 0: there is none
    };

    /// Cancelled soon after `isCancelled` is set; InvalidArgument for an empty period.
    [[nodiscard]] Result Run(const std::atomic<bool> &isCancelled, Outcome &outcome) const;
};

} // namespace Nodes
