#pragma once

#include "nodes/NodesExport.h"
#include "nodes/reports/data/SignalFacts.h"
#include "nodes/reports/time/ReportPeriod.h"

#include <optional>
#include <vector>

namespace Nodes {

/// Adds the samples of one signal up to what it did in each of many rows, one sample after the
/// other, in whatever numbers. A sample holds until the next one, as it did on the screens: that is
/// what archives leave out samples for. One that is bad, stale or no number is a gap: nothing is
/// known until the next one. One thread.
class NODES_EXPORT RowAggregator
{
public:
    /// `rows` ascend without holes. A value above the threshold is running.
    RowAggregator(const std::vector<ReportSpan> &rows, double threshold);

    /// In ascending order of time; those before the rows count for what they hold, earlier ones
    /// than the one before are left out.
    void Add(Timestamp time, double number, Quality quality);
    /// Ends the adding: the last sample held until there at least. One for each row.
    std::vector<SignalFacts> Finish(Timestamp heldUntil);

private:
    struct Sample
    {
        Timestamp time;
        double number;
        Quality quality;
        bool isKnown;
    };

    void holdUntil(Timestamp time);
    void fill(SignalFacts &facts, Timestamp length);
    void noteStart(Timestamp time);

    const std::vector<ReportSpan> m_rows;
    const double m_threshold;
    std::vector<SignalFacts> m_facts; // integral and mean as value times microseconds until the end
    std::size_t m_row = 0;            // the first one that later samples may lie in
    std::optional<Sample> m_last;
    std::optional<bool> m_wasRunning; // when it was known last
};

} // namespace Nodes
