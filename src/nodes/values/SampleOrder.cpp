#include "nodes/values/SampleOrder.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp mostAhead = 10 * second;
constexpr Timestamp mostBehind = second;

} // namespace

Timestamp SampleOrder::Place(Timestamp source, Timestamp arrival)
{
    const bool isPlausible = source <= arrival + mostAhead && source >= m_last - mostBehind;
    m_last = std::max(isPlausible ? source : arrival, m_last + 1);
    return m_last;
}

} // namespace Nodes
