#pragma once

#include "widgets/charts/painting/RollingVector.h"

#include "nodes/values/Quality.h"

#include <QPointF>

#include <cstdint>

namespace Widgets {

/// What drawing needs to know of neighbouring points that fall into one bucket of x: all of them
/// drawn, of one quality and joined to each other.
struct CurveBucket
{
    std::int64_t key; ///< x of its points is in [key, key + 1) bucket widths
    float firstX;     ///< of the point, as a part of the bucket's width
    float lastX;
    float lowX;
    float highX;
    double firstY;
    double lastY;
    double lowY;
    double highY;
    std::uint32_t count;
    Nodes::Quality quality;
    bool startsLine; ///< nothing joins it to the bucket before
};

/// All drawn points of a curve in buckets of one width, aligned to x = 0: a new point touches the
/// last bucket only, and a moved view none.
class CurveLevel
{
public:
    /// `width` > 0, in units of x.
    explicit CurveLevel(double width) : m_width(width), m_perUnit(1 / width) {}

    [[nodiscard]] double width() const { return m_width; }
    [[nodiscard]] const RollingVector<CurveBucket> &buckets() const { return m_buckets; }
    /// Index of the first bucket that ends right of x; the number of buckets when there is none.
    [[nodiscard]] std::size_t indexAt(double x) const;
    [[nodiscard]] double xOf(const CurveBucket &bucket, float part) const
    {
        return (double(bucket.key) + double(part)) * m_width;
    }

    /// Points in the order of x. One that is not drawn ends the line.
    void append(const QPointF &point, Nodes::Quality quality, bool isDrawn);
    /// The points of a bucket of a finer level that make a difference.
    void append(const CurveBucket &finer, const CurveLevel &level);
    /// Ends the line: the next point is not joined to the last one.
    void breakLine() { m_broken = true; }
    /// Forgets everything left of x, and what the bucket at x held.
    void trimBefore(double x, CurveLevel &&bucketAtX);
    [[nodiscard]] std::int64_t keyOf(double x) const;

private:
    [[nodiscard]] bool joins(std::int64_t key, Nodes::Quality quality) const;

    RollingVector<CurveBucket> m_buckets;
    double m_width;
    double m_perUnit;
    bool m_broken = true;
};

} // namespace Widgets
