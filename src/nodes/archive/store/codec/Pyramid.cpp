#include "nodes/archive/store/codec/Pyramid.h"

#include "nodes/archive/QualityOrder.h"
#include "nodes/archive/store/codec/ColumnReader.h"
#include "nodes/archive/store/codec/ColumnWriter.h"
#include "nodes/archive/store/codec/Decimals.h"
#include "nodes/values/IntervalSample.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace Nodes {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint64_t mostBuckets = 2 * Pyramid::MostPlaces;

template <class Member>
std::vector<double> column(const std::vector<PyramidBucket> &buckets, Member member)
{
    std::vector<double> numbers(buckets.size());
    std::transform(buckets.begin(), buckets.end(), numbers.begin(), std::mem_fn(member));
    return numbers;
}

constexpr double PyramidBucket::*numbers[] = {&PyramidBucket::minimum, &PyramidBucket::maximum,
                                              &PyramidBucket::first, &PyramidBucket::last,
                                              &PyramidBucket::sum};

} // namespace

PyramidBucket BucketOf(const SampleRun &run, std::size_t i)
{
    PyramidBucket bucket;
    const Quality quality = run.qualities[i];
    const double number = IsKnown(quality) ? run.numbers[i] : none;
    const bool isKnown = !std::isnan(number);
    bucket.place = run.times[i];
    bucket.count = 1;
    bucket.known = isKnown ? 1 : 0;
    bucket.minimum = bucket.maximum = bucket.first = bucket.last = number;
    bucket.sum = isKnown ? number : 0;
    bucket.worst = quality;
    return bucket;
}

void PyramidBucket::Join(const PyramidBucket &next)
{
    if (count == 0)
        first = next.first;
    // A comparison with NaN is false.
    if (known == 0 || next.minimum < minimum)
        minimum = next.minimum;
    if (known == 0 || next.maximum > maximum)
        maximum = next.maximum;
    last = next.last;
    sum += next.sum;
    count += next.count;
    known += next.known;
    worst = WorseOf(worst, next.worst);
}

IntervalSample PyramidBucket::InGrid(int bits) const
{
    return {place << bits, (place + 1) << bits, minimum, maximum, first, last, count, worst};
}

Pyramid Pyramid::Over(Timestamp first, Timestamp last, int bits)
{
    Pyramid pyramid;
    pyramid.bits = bits;
    while ((last >> pyramid.bits) - (first >> pyramid.bits) >= MostPlaces)
        ++pyramid.bits;
    return pyramid;
}

Pyramid Pyramid::Of(const SampleRun &run)
{
    Pyramid pyramid = Over(run.times.front(), run.times.back(), 0);
    for (std::size_t i = 0; i < run.Size(); ++i)
        pyramid.Add(BucketOf(run, i), 0);
    std::vector<double> added = run.numbers;
    std::replace_if(
        added.begin(), added.end(), [](double number) { return std::isnan(number); }, 0.0);
    pyramid.RoundSums(added);
    return pyramid;
}

void Pyramid::RoundSums(const std::vector<double> &added)
{
    constexpr double exact = 9007199254740992.0; // 2^53
    std::vector<std::int64_t> scaled;
    const std::optional<unsigned> places = Decimals::Scale(added, scaled);
    if (!places)
        return;
    const double power = Decimals::Powers[*places];
    for (PyramidBucket &bucket : buckets) {
        const double integer = std::nearbyint(bucket.sum * power);
        if (std::fabs(integer) < exact)
            bucket.sum = integer / power;
    }
}

void Pyramid::Add(const PyramidBucket &bucket, int itsBits)
{
    const std::int64_t place = bucket.place >> (bits - itsBits);
    if (!buckets.empty() && buckets.back().place == place) {
        buckets.back().Join(bucket);
    } else {
        buckets.push_back(bucket);
        buckets.back().place = place;
    }
}

void Pyramid::Put(ColumnWriter &into) const
{
    std::vector<std::int64_t> places;
    std::vector<std::int64_t> counts;
    std::vector<std::int64_t> gaps;
    std::vector<std::uint8_t> worst;
    for (const PyramidBucket &bucket : buckets) {
        places.push_back(bucket.place);
        counts.push_back(static_cast<std::int64_t>(bucket.count));
        gaps.push_back(static_cast<std::int64_t>(bucket.count - bucket.known));
        worst.push_back(std::uint8_t(bucket.worst));
    }
    into.PutVarint(std::uint64_t(bits));
    into.PutVarint(buckets.size());
    into.PutIntegers(places, 2);
    into.PutIntegers(counts, 1);
    into.PutIntegers(gaps, 1);
    for (const auto member : numbers)
        into.PutNumbers(column(buckets, member));
    into.PutRepeats(worst);
}

bool Pyramid::Get(ColumnReader &from)
{
    bits = int(std::min<std::uint64_t>(from.GetVarint(), 62));
    const std::uint64_t count = std::min(from.GetVarint(), mostBuckets);
    std::vector<std::int64_t> integers;
    buckets.assign(count, PyramidBucket());
    from.GetIntegers(count, 2, integers);
    for (std::size_t i = 0; i < count; ++i)
        buckets[i].place = integers[i];
    from.GetIntegers(count, 1, integers);
    for (std::size_t i = 0; i < count; ++i)
        buckets[i].count = static_cast<std::uint64_t>(integers[i]);
    from.GetIntegers(count, 1, integers);
    for (std::size_t i = 0; i < count; ++i)
        buckets[i].known = buckets[i].count - static_cast<std::uint64_t>(integers[i]);
    std::vector<double> values;
    for (const auto member : numbers) {
        from.GetNumbers(count, values);
        for (std::size_t i = 0; i < count; ++i)
            buckets[i].*member = values[i];
    }
    std::vector<std::uint8_t> worst;
    from.GetRepeats(count, worst);
    for (std::size_t i = 0; i < count; ++i)
        buckets[i].worst = Quality(std::min<std::uint8_t>(worst[i], std::uint8_t(Quality::Stale)));
    return from.IsSound();
}

} // namespace Nodes
