#pragma once

#include "nodes/archive/store/SampleRun.h"

#include <cstdint>
#include <vector>

namespace Nodes {

class ColumnReader;
class ColumnWriter;
struct IntervalSample;

/// Aggregate of the samples of a block within one interval of the grid of absolute time. What of
/// the interval lies in other blocks is not in it: such parts are joined in the order of time.
struct PyramidBucket
{
    std::int64_t place = 0;  ///< its number in the grid: time >> bits
    std::uint64_t count = 0; ///< samples
    std::uint64_t known = 0; ///< of them those that are no gap
    double minimum = 0;      ///< NaN without a known one, as the maximum
    double maximum = 0;
    double first = 0; ///< of the first sample; NaN if that is a gap
    double last = 0;
    double sum = 0; ///< of those known
    Quality worst = Quality::Good;

    /// What follows in time.
    void Join(const PyramidBucket &next);
    /// With the bounds of its interval in a grid.
    IntervalSample InGrid(int bits) const;
};

/// Aggregates of a block of samples.
struct Pyramid
{
    static constexpr std::int64_t MostPlaces = 64; ///< of the grid, in one block

    int bits = 0;                       ///< an interval of the grid is 2^bits microseconds wide
    std::vector<PyramidBucket> buckets; ///< by place, those that have samples

    /// Of samples that ascend, of which there is at least one.
    static Pyramid Of(const SampleRun &run);
    /// Of the narrowest grid for a span that is at least `bits` wide.
    static Pyramid Over(Timestamp first, Timestamp last, int bits);
    /// Adds buckets of a grid that is not wider, which follow in time.
    void Add(const PyramidBucket &bucket, int itsBits);

    /// Takes the errors of adding out of sums of decimals: they are decimals again, and short.
    /// `added` is what was summed up, finite.
    void RoundSums(const std::vector<double> &added);

    void Put(ColumnWriter &into) const;
    /// False when the bytes are none.
    bool Get(ColumnReader &from);
};

/// The bucket of one sample, in the grid of single microseconds.
PyramidBucket BucketOf(const SampleRun &run, std::size_t i);

} // namespace Nodes
