#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Nodes {

/// Durations in a fixed amount of memory, however many there are: the mean is exact, a quantile is
/// within 1 % of the exact one.
class NODES_EXPORT DurationHistogram
{
public:
    /// Microseconds; what is negative counts as 0.
    void Add(Timestamp duration);
    std::uint64_t Count() const { return m_count; }
    /// 0 without durations.
    Timestamp Mean() const;
    /// The shortest duration that at least `share` (0 to 1) of all do not exceed; 0 without any.
    Timestamp Quantile(double share) const;

private:
    static std::size_t placeOf(std::uint64_t duration);
    static Timestamp middleOf(std::size_t place);

    std::vector<std::uint64_t> m_counts; // grows up to some 60 octaves of 64 places
    std::uint64_t m_count = 0;
    double m_sum = 0;
    Timestamp m_least = 0;
    Timestamp m_most = 0;
};

} // namespace Nodes
