#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/HistoryColumn.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace Nodes {

/// Makes a column of the samples of a span that a history reads: as they are while they fit, else
/// one aggregate for each interval of a grid. The grid is that of absolute time in powers of two,
/// so a span that is panned shows the same aggregates. The sample before the span and the one
/// behind it belong to the column too, beyond the limit, so that lines reach the edges of a plot.
/// A sample that is bad, stale or no number is a gap: nothing is known from there to the next.
/// One thread.
class NODES_EXPORT HistoryColumnBuilder
{
public:
    /// Of samples with `from` <= time <= `to`; at most `maxPoints` of them, at least 2;
    /// 0 for all.
    HistoryColumnBuilder(Timestamp from, Timestamp to, std::size_t maxPoints);

    /// On a grid of 2^gridBits microseconds, whatever its number of intervals.
    static HistoryColumnBuilder OnGrid(Timestamp from, Timestamp to, std::size_t maxPoints,
                                       int gridBits);

    Timestamp GetFrom() const { return m_from; }
    Timestamp GetTo() const { return m_to; }
    std::size_t GetMaxPoints() const { return m_maxPoints; }
    /// An interval of the grid is 2^bits microseconds wide, from a multiple of that on.
    int GetGridBits() const { return m_gridBits; }
    /// So many samples of the span are about to be added one by one.
    void Reserve(std::size_t count);
    /// Later samples than those added before. Of those before the span only the last stays.
    void Add(Timestamp time, double number, Quality quality);
    /// A text: a gap for whoever wants numbers.
    void AddText(Timestamp time, std::string text, Quality quality);
    /// The same for many at once.
    void Add(const Timestamp *times, const double *numbers, const Quality *qualities,
             std::size_t count);
    /// A ready aggregate of later samples, which all lie in the span and in one interval of the
    /// grid; its begin lies in that interval too. From then on the column is one of aggregates: for
    /// who knows that the samples do not fit.
    void Add(const IntervalSample &aggregate);
    /// What another column, on the same grid or a finer one, has in [from, end).
    void Add(const HistoryColumn &column, Timestamp from, Timestamp end);
    /// The sample behind the span is there: no other is wanted.
    bool IsComplete() const { return m_after.has_value(); }
    /// Ends the building.
    HistoryColumn Take();

private:
    HistoryColumnBuilder(Timestamp from, Timestamp to, std::size_t maxPoints, int gridBits);

    HistoryColumn takeNumbers();
    void append(const IntervalSample &sample);
    void fold(const IntervalSample &sample);
    void foldAll();
    IntervalSample gridInterval(Timestamp time) const;

    const Timestamp m_from;
    const Timestamp m_to;
    const std::size_t m_maxPoints;
    const int m_gridBits; // an interval is 2^bits microseconds wide
    std::optional<IntervalSample> m_before;
    std::optional<IntervalSample> m_after;
    HistoryColumn m_column; // without the samples before and behind, and without texts
    std::map<Timestamp, std::string> m_texts;
};

} // namespace Nodes
