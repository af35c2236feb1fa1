#include "widgets/charts/painting/CurvePyramid.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

// One for each chart that shows the curve, and what the operator zooms back to.
constexpr std::size_t maxLevels = 4;
// Keys are whole numbers of buckets from x = 0 and have to be exact as double.
constexpr int maxKeyBits = 50;

// Widths that differ by less draw the same columns over any canvas.
constexpr double sameWidth = 1e-6;
// As often is a magnification asked for while it is being changed, at most.
constexpr int asksBeforeColumns = 2;

double powerOfTwoFor(double width, const CurvePoints &data)
{
    int exponent = std::ilogb(width);
    if (data.size > 0) {
        const double largest =
            std::max(std::abs(data.points[0].x()), std::abs(data.points[data.size - 1].x()));
        if (largest > 0)
            exponent = std::max(exponent, std::ilogb(largest) - maxKeyBits);
    }
    return std::ldexp(1.0, exponent);
}

bool isSame(double width, double other)
{
    return std::abs(width - other) <= sameWidth * other;
}

} // namespace

const CurveLevel &CurvePyramid::level(double width, const CurvePoints &data)
{
    return kept(powerOfTwoFor(width, data), data);
}

const CurveLevel *CurvePyramid::columns(double width, const CurvePoints &data)
{
    if (!isSame(width, m_lastWidth)) {
        m_lastWidth = width;
        m_askedForLast = 0;
    }
    if (m_askedForLast < asksBeforeColumns) {
        ++m_askedForLast;
        return nullptr;
    }
    return powerOfTwoFor(width, data) <= width ? &kept(m_lastWidth, data) : nullptr;
}

const CurveLevel &CurvePyramid::kept(double width, const CurvePoints &data)
{
    ++m_use;
    for (Kept &kept : m_levels) {
        if (isSame(width, kept.level.width())) {
            kept.lastUse = m_use;
            return kept.level;
        }
    }
    CurveLevel added = built(width, data);
    const auto older = [](const Kept &a, const Kept &b) { return a.lastUse < b.lastUse; };
    if (m_levels.size() >= maxLevels)
        m_levels.erase(std::min_element(m_levels.begin(), m_levels.end(), older));
    m_levels.push_back({std::move(added), m_use});
    return m_levels.back().level;
}

CurveLevel CurvePyramid::built(double width, const CurvePoints &data) const
{
    const CurveLevel *finer = nullptr;
    for (const Kept &kept : m_levels) {
        if (kept.level.width() < width && (!finer || finer->width() < kept.level.width()))
            finer = &kept.level;
    }
    CurveLevel level(width);
    if (finer) {
        for (const CurveBucket &bucket : finer->buckets())
            level.append(bucket, *finer);
        if (data.size > 0 && !data.isDrawn(data.size - 1))
            level.breakLine();
        return level;
    }
    for (std::size_t i = 0; i < data.size; ++i)
        level.append(data.points[i], data.qualities[i], data.isDrawn(i));
    return level;
}

const CurveLevel *CurvePyramid::coarsest() const
{
    const CurveLevel *found = nullptr;
    for (const Kept &kept : m_levels) {
        if (!found || kept.level.width() > found->width())
            found = &kept.level;
    }
    return found;
}

void CurvePyramid::append(const QPointF &point, Nodes::Quality quality, bool isDrawn)
{
    for (Kept &kept : m_levels)
        kept.level.append(point, quality, isDrawn);
}

void CurvePyramid::trimFront(const CurvePoints &data)
{
    std::size_t first = 0;
    while (first < data.size && !data.isDrawn(first))
        ++first;
    if (first == data.size) {
        clear();
        return;
    }
    const double x = data.points[first].x();
    for (Kept &kept : m_levels) {
        CurveLevel bucket(kept.level.width());
        const std::int64_t key = bucket.keyOf(x);
        for (std::size_t i = first; i < data.size; ++i) {
            const bool drawn = data.isDrawn(i);
            if (drawn && bucket.keyOf(data.points[i].x()) != key)
                break;
            bucket.append(data.points[i], data.qualities[i], drawn);
        }
        kept.level.trimBefore(x, std::move(bucket));
    }
}

void CurvePyramid::clear()
{
    m_levels.clear();
}

} // namespace Widgets
