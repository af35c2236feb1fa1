#include "nodes/alarms/statistics/DurationHistogram.h"

#include <algorithm>
#include <cmath>

namespace Nodes {

namespace {

constexpr int fineBits = 6; // places an octave: 2^6, so a place is at most 1/64 wide

int highestBit(std::uint64_t number)
{
    int bit = 0;
    while (number >>= 1)
        ++bit;
    return bit;
}

} // namespace

std::size_t DurationHistogram::placeOf(std::uint64_t duration)
{
    const int bit = highestBit(duration | 1);
    if (bit < fineBits)
        return std::size_t(duration);
    const int shift = bit - fineBits;
    return (std::size_t(shift + 1) << fineBits) +
           std::size_t((duration >> shift) - (1U << fineBits));
}

Timestamp DurationHistogram::middleOf(std::size_t place)
{
    const std::size_t octave = place >> fineBits;
    if (octave == 0)
        return Timestamp(place);
    const std::size_t shift = octave - 1;
    const auto low = Timestamp((place & ((1U << fineBits) - 1)) + (1U << fineBits)) << shift;
    return low + ((Timestamp(1) << shift) >> 1);
}

void DurationHistogram::Add(Timestamp duration)
{
    duration = std::max<Timestamp>(duration, 0);
    const std::size_t place = placeOf(std::uint64_t(duration));
    if (place >= m_counts.size())
        m_counts.resize(place + 1);
    ++m_counts[place];
    m_least = m_count == 0 ? duration : std::min(m_least, duration);
    m_most = std::max(m_most, duration);
    ++m_count;
    m_sum += double(duration);
}

Timestamp DurationHistogram::Mean() const
{
    return m_count == 0 ? 0 : Timestamp(std::llround(m_sum / double(m_count)));
}

Timestamp DurationHistogram::Quantile(double share) const
{
    if (m_count == 0)
        return 0;
    const auto rank = std::max<std::uint64_t>(std::uint64_t(std::ceil(share * double(m_count))), 1);
    std::uint64_t below = 0;
    for (std::size_t place = 0; place < m_counts.size(); ++place) {
        below += m_counts[place];
        if (below >= rank)
            return std::clamp(middleOf(place), m_least, m_most);
    }
    return m_most;
}

} // namespace Nodes
