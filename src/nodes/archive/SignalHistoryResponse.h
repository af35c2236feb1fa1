#pragma once

#include "nodes/model/links/ValueLink.h"
#include "nodes/values/IntervalSample.h"

#include <cstdint>

namespace Nodes {

/// One sample of an archive's answer: of which signal, when, what. Plain value, any thread.
class SignalHistoryResponse : public ValueLink
{
public:
    using ValueLink::ValueLink;

    unsigned long GetNodeId() const { return GetNodeLink().GetNodeId(); }
    /// Source time in milliseconds since 1970-01-01 00:00 UTC; for an aggregate its begin.
    std::uint64_t GetTime() const
    {
        const IntervalSample *interval = getIntervalSample();
        const Timestamp time = interval ? interval->begin : GetValue().GetSourceTime();
        return time > 0 ? static_cast<std::uint64_t>(time) / 1000 : 0;
    }
    /// Non-null for an aggregated sample; lives as long as this answer.
    const IntervalSample *getIntervalSample() const { return GetValue().getIntervalSample(); }
};

} // namespace Nodes
