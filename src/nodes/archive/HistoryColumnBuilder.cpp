#include "nodes/archive/HistoryColumnBuilder.h"

#include "nodes/archive/LargePages.h"
#include "nodes/archive/QualityOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Nodes {

namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();
constexpr Timestamp endOfTime = Timestamp(1) << 62; // the end of any interval of a grid is a number

IntervalSample single(Timestamp time, double number, Quality quality)
{
    const double valid = IsKnown(quality) ? number : gap;
    return {time, time + 1, valid, valid, valid, valid, 1, quality};
}

void merge(IntervalSample &into, const IntervalSample &next)
{
    if (into.count == 0)
        into.first = next.first;
    into.minimum = std::fmin(into.minimum, next.minimum); // NaN only where both are
    into.maximum = std::fmax(into.maximum, next.maximum);
    into.last = next.last;
    into.count += next.count;
    into.worst = WorseOf(into.worst, next.worst);
}

/// Width of the narrowest grid that has at most `maximum` intervals over the span, in bits.
int bitsFor(Timestamp from, Timestamp to, std::size_t maximum)
{
    int bits = 0;
    while (std::size_t((to >> bits) - (from >> bits)) >= maximum)
        ++bits;
    return bits;
}

void push(HistoryColumn &column, const IntervalSample &sample, bool isAggregate)
{
    column.times.push_back(sample.begin);
    column.numbers.push_back(sample.last);
    column.qualities.push_back(sample.worst);
    if (isAggregate)
        column.intervals.push_back(sample);
}

} // namespace

HistoryColumnBuilder::HistoryColumnBuilder(Timestamp from, Timestamp to, std::size_t maxPoints)
    : m_from(std::min(from, endOfTime - 1)),
      m_to(std::clamp(to, m_from, endOfTime - 1)),
      m_maxPoints(maxPoints == 0 ? 0 : std::max<std::size_t>(maxPoints, 2)),
      m_gridBits(m_maxPoints == 0 ? 0 : bitsFor(m_from, m_to, m_maxPoints))
{
}

HistoryColumnBuilder::HistoryColumnBuilder(Timestamp from, Timestamp to, std::size_t maxPoints,
                                           int gridBits)
    : m_from(from), m_to(to), m_maxPoints(maxPoints), m_gridBits(gridBits)
{
}

HistoryColumnBuilder HistoryColumnBuilder::OnGrid(Timestamp from, Timestamp to,
                                                  std::size_t maxPoints, int gridBits)
{
    return HistoryColumnBuilder(from, to, maxPoints, gridBits);
}

void HistoryColumnBuilder::Reserve(std::size_t count)
{
    const std::size_t around = 2; // before and behind the span
    const std::size_t size = (m_maxPoints == 0 ? count : std::min(count, m_maxPoints)) + around;
    const auto reserve = [size](auto &column) {
        column.reserve(size);
        PreferLargePages(column.data(), size * sizeof column[0]);
    };
    reserve(m_column.times);
    reserve(m_column.numbers);
    reserve(m_column.qualities);
}

void HistoryColumnBuilder::Add(Timestamp time, double number, Quality quality)
{
    const IntervalSample sample = single(time, number, quality);
    if (time < m_from)
        m_before = sample;
    else if (time <= m_to)
        append(sample);
    else if (!m_after)
        m_after = sample;
}

void HistoryColumnBuilder::AddText(Timestamp time, std::string text, Quality quality)
{
    Add(time, gap, quality);
    m_texts[time] = std::move(text);
}

void HistoryColumnBuilder::Add(const Timestamp *times, const double *numbers,
                               const Quality *qualities, std::size_t count)
{
    std::size_t i = 0;
    const auto addOne = [&] {
        Add(times[i], numbers[i], qualities[i]);
        ++i;
    };
    while (i < count && times[i] < m_from)
        addOne();
    const auto within = std::size_t(std::upper_bound(times + i, times + count, m_to) - times);
    const bool isPlain = m_column.intervals.empty() &&
                         (m_maxPoints == 0 || m_column.times.size() + within - i <= m_maxPoints);
    if (isPlain && within > i) {
        const auto append = [&](auto &column, const auto *from) {
            column.insert(column.end(), from + i, from + within);
        };
        append(m_column.times, times);
        append(m_column.numbers, numbers);
        append(m_column.qualities, qualities);
        for (std::size_t k = m_column.times.size() - (within - i); i < within; ++i, ++k) {
            if (!IsKnown(qualities[i]))
                m_column.numbers[k] = gap;
        }
    }
    while (i < count && !IsComplete())
        addOne();
}

void HistoryColumnBuilder::Add(const IntervalSample &aggregate)
{
    if (m_column.intervals.empty())
        foldAll();
    fold(aggregate);
}

void HistoryColumnBuilder::Add(const HistoryColumn &column, Timestamp from, Timestamp end)
{
    const auto &times = column.times;
    const auto first = std::lower_bound(times.begin(), times.end(), from);
    const auto last = std::lower_bound(first, times.end(), end);
    const auto begin = std::size_t(first - times.begin());
    const auto count = std::size_t(last - first);
    if (column.intervals.empty()) {
        Add(times.data() + begin, column.numbers.data() + begin, column.qualities.data() + begin,
            count);
        return;
    }
    for (std::size_t i = begin; i < begin + count; ++i) {
        const bool isWithin = times[i] >= m_from && times[i] <= m_to;
        if (isWithin)
            Add(column.intervals[i]);
        else // a single sample beside the span
            Add(times[i], column.numbers[i], column.qualities[i]);
    }
}

void HistoryColumnBuilder::append(const IntervalSample &sample)
{
    if (!m_column.intervals.empty())
        fold(sample);
    else if (m_maxPoints == 0 || m_column.times.size() < m_maxPoints)
        push(m_column, sample, false);
    else {
        foldAll();
        fold(sample);
    }
}

void HistoryColumnBuilder::foldAll()
{
    HistoryColumn plain;
    std::swap(plain.times, m_column.times);
    std::swap(plain.numbers, m_column.numbers);
    std::swap(plain.qualities, m_column.qualities);
    for (std::size_t i = 0; i < plain.times.size(); ++i)
        fold(single(plain.times[i], plain.numbers[i], plain.qualities[i]));
}

void HistoryColumnBuilder::fold(const IntervalSample &sample)
{
    const IntervalSample place = gridInterval(sample.begin);
    if (m_column.intervals.empty() || m_column.intervals.back().begin != place.begin)
        push(m_column, place, true);
    IntervalSample &interval = m_column.intervals.back();
    merge(interval, sample);
    m_column.numbers.back() = interval.last;
    m_column.qualities.back() = interval.worst;
}

/// Cut to the span, so that the samples before and behind it come before and behind all.
IntervalSample HistoryColumnBuilder::gridInterval(Timestamp time) const
{
    const Timestamp place = time >> m_gridBits;
    const Timestamp begin = std::max(m_from, place << m_gridBits);
    const Timestamp end = std::min(m_to + 1, (place + 1) << m_gridBits);
    return {begin, end, gap, gap, gap, gap, 0, Quality::Good};
}

HistoryColumn HistoryColumnBuilder::Take()
{
    HistoryColumn column = takeNumbers();
    if (m_texts.empty() || !column.intervals.empty())
        return column;
    column.texts.resize(column.times.size());
    for (std::size_t i = 0; i < column.times.size(); ++i) {
        const auto text = m_texts.find(column.times[i]);
        if (text != m_texts.end())
            column.texts[i] = std::move(text->second);
    }
    return column;
}

HistoryColumn HistoryColumnBuilder::takeNumbers()
{
    const bool isAggregated = !m_column.intervals.empty();
    if (m_before) {
        m_column.times.insert(m_column.times.begin(), m_before->begin);
        m_column.numbers.insert(m_column.numbers.begin(), m_before->last);
        m_column.qualities.insert(m_column.qualities.begin(), m_before->worst);
        if (isAggregated)
            m_column.intervals.insert(m_column.intervals.begin(), *m_before);
    }
    if (m_after)
        push(m_column, *m_after, isAggregated);
    return std::move(m_column);
}

} // namespace Nodes
