#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Quality.h"
#include "nodes/values/Timestamp.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Nodes {

class SignalValue;

/// What a sample holds.
enum class SampleKind : std::uint8_t {
    Gap = 0, ///< no value: an error, an outage, what is no finite number
    Number = 1,
    Logical = 2,
    Text = 3
};

/// Samples of one signal as columns, all of one length but for `kinds` and `texts`, which are empty
/// where every sample is a number, and where none is a text. Plain value.
///
/// A number is finite. Of gaps and texts it is NaN, of logicals 0 or 1. The quality of a gap is
/// neither good nor uncertain: what is not known looks neither.
struct NODES_EXPORT SampleRun
{
    std::vector<Timestamp> times;
    std::vector<double> numbers;
    std::vector<Quality> qualities;
    std::vector<SampleKind> kinds;
    std::vector<std::string> texts; ///< "" of samples that are no text

    std::size_t Size() const { return times.size(); }
    bool IsEmpty() const { return times.empty(); }
    SampleKind KindAt(std::size_t i) const { return kinds.empty() ? SampleKind::Number : kinds[i]; }
    /// "" of a sample that is no text.
    const std::string &TextAt(std::size_t i) const;
    bool IsAscending() const; ///< each time once

    /// What is not finite becomes a gap.
    void Add(Timestamp time, double number, Quality quality);
    void AddLogical(Timestamp time, bool value, Quality quality);
    void AddText(Timestamp time, std::string text, Quality quality);
    /// From here to the next sample nothing is known: the mark of an outage. A quality that is
    /// better than stale becomes bad.
    void AddGap(Timestamp time, Quality quality = Quality::Bad);
    /// By the type of the value: errors and nothing received are gaps.
    void Add(Timestamp time, const SignalValue &value);

    /// Samples [begin, end) of another run.
    void Append(const SampleRun &from, std::size_t begin, std::size_t end);
    void Append(const SampleRun &from) { Append(from, 0, from.Size()); }
    /// Those with `from` <= time <= `to`, of samples that ascend.
    SampleRun Part(Timestamp from, Timestamp to) const;
    void EraseFront(std::size_t count);
    void Reserve(std::size_t count);
    void Clear();
    /// Sorts by time; of samples of one time the one that was added first stays.
    void Sort();
    /// Index of the first sample at or after a time, of samples that ascend.
    std::size_t LowerBound(Timestamp time) const;
    /// Bytes of the texts.
    std::size_t TextBytes() const;

    bool operator==(const SampleRun &other) const; ///< NaN equals NaN

private:
    void push(Timestamp time, double number, Quality quality, SampleKind kind);
};

} // namespace Nodes
