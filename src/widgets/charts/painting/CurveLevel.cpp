#include "widgets/charts/painting/CurveLevel.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

std::int64_t CurveLevel::keyOf(double x) const
{
    return std::int64_t(std::floor(x * m_perUnit));
}

std::size_t CurveLevel::indexAt(double x) const
{
    const std::int64_t key = keyOf(x);
    const CurveBucket *found =
        std::lower_bound(m_buckets.begin(), m_buckets.end(), key,
                         [](const CurveBucket &bucket, std::int64_t k) { return bucket.key < k; });
    return std::size_t(found - m_buckets.begin());
}

bool CurveLevel::joins(std::int64_t key, Nodes::Quality quality) const
{
    return !m_broken && !m_buckets.empty() && m_buckets.back().key == key &&
           m_buckets.back().quality == quality;
}

void CurveLevel::append(const QPointF &point, Nodes::Quality quality, bool isDrawn)
{
    if (!isDrawn) {
        m_broken = true;
        return;
    }
    const double position = point.x() * m_perUnit;
    const double floored = std::floor(position);
    const auto key = std::int64_t(floored);
    const auto part = float(position - floored);
    const double y = point.y();
    if (!joins(key, quality)) {
        m_buckets.push_back({key, part, part, part, part, y, y, y, y, 1, quality, m_broken});
        m_broken = false;
        return;
    }
    CurveBucket &bucket = m_buckets.back();
    bucket.lastX = part;
    bucket.lastY = y;
    ++bucket.count;
    if (y < bucket.lowY) {
        bucket.lowY = y;
        bucket.lowX = part;
    }
    if (y > bucket.highY) {
        bucket.highY = y;
        bucket.highX = part;
    }
}

void CurveLevel::append(const CurveBucket &finer, const CurveLevel &level)
{
    m_broken = m_broken || finer.startsLine;
    const auto add = [&](float part, double y) {
        append({level.xOf(finer, part), y}, finer.quality, true);
    };
    add(finer.firstX, finer.firstY);
    if (finer.count == 1)
        return;
    const bool lowFirst = finer.lowX < finer.highX;
    add(lowFirst ? finer.lowX : finer.highX, lowFirst ? finer.lowY : finer.highY);
    add(lowFirst ? finer.highX : finer.lowX, lowFirst ? finer.highY : finer.lowY);
    add(finer.lastX, finer.lastY);
}

void CurveLevel::trimBefore(double x, CurveLevel &&bucketAtX)
{
    const std::int64_t key = keyOf(x);
    const std::size_t begin = indexAt(x);
    std::size_t end = begin;
    while (end < m_buckets.size() && m_buckets[end].key == key)
        ++end;
    // What is left of the bucket can only be in as many parts as it was, or in fewer.
    const std::size_t kept = std::min(bucketAtX.m_buckets.size(), end - begin);
    for (std::size_t i = 0; i < kept; ++i)
        m_buckets[end - kept + i] = bucketAtX.m_buckets[i];
    m_buckets.trimFront(end - kept);
    if (!m_buckets.empty())
        m_buckets[0].startsLine = true;
}

} // namespace Widgets
