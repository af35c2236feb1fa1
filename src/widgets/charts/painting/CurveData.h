#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/painting/CurvePyramid.h"
#include "widgets/charts/painting/RollingVector.h"

#include "nodes/values/Quality.h"

#include <qwt_series_data.h>

#include <QPointF>

namespace Widgets {

/// The points of a curve, with their quality, in the order in which they are drawn; and what
/// drawing and autoscaling need to cost the same however many there are.
///
/// Normally x does not decrease. Points may come in any order, also with equal x; while there is
/// one that goes back the curve is drawn point by point in the order of the points (see
/// isSorted()). A point whose y is NaN or infinite, or whose quality is bad, is not drawn and
/// breaks the line; one without a finite x has no place of its own and is kept as such a break. GUI
/// thread only.
class WIDGETS_EXPORT CurveData : public QwtSeriesData<QPointF>
{
public:
    /// A stretch of x without a trustworthy value.
    struct BadStretch
    {
        double from;
        double to;
    };

    [[nodiscard]] std::size_t size() const override { return m_points.size(); }
    [[nodiscard]] QPointF sample(std::size_t i) const override { return m_points[i]; }
    /// Of the points that are drawn; QRectF(0, 0, -1, -1) when there are none.
    [[nodiscard]] QRectF boundingRect() const override;

    void append(const QPointF &point, Nodes::Quality quality = Nodes::Quality::Good);
    /// (0, 0) when empty.
    [[nodiscard]] QPointF last() const;
    [[nodiscard]] Nodes::Quality quality(std::size_t i) const { return m_qualities[i]; }
    void reserve(std::size_t count);
    void clear();
    /// Takes `count` points from the front; what that costs depends on `count` only.
    void trimFront(std::size_t count);
    /// Brings the points into the order of x, those with equal x staying in their order, and drops
    /// repetitions of the same point.
    void sort();

    /// True while no point lies before its predecessor.
    [[nodiscard]] bool isSorted() const { return m_backSteps == 0; }
    /// Of sorted points: index of the first one at or right of x; size() when there is none.
    [[nodiscard]] std::size_t indexAt(double x) const;
    /// True when the point is drawn: finite and not bad.
    [[nodiscard]] bool isDrawn(std::size_t i) const;
    [[nodiscard]] const QPointF *points() const { return m_points.data(); }
    [[nodiscard]] const Nodes::Quality *qualities() const { return m_qualities.data(); }
    [[nodiscard]] const RollingVector<BadStretch> &badStretches() const { return m_bad; }

    [[nodiscard]] CurvePoints view() const;
    /// Of sorted points: extremes in buckets no wider than `width` (> 0, units of x).
    [[nodiscard]] const CurveLevel &level(double width) const;
    /// The same in buckets of exactly `width`; null until a width is asked for again and again.
    [[nodiscard]] const CurveLevel *columns(double width) const;

private:
    void noteBad(double x, Nodes::Quality quality);
    void findRect() const;
    void extendRect(const QPointF &point) const;

    RollingVector<QPointF> m_points;
    RollingVector<Nodes::Quality> m_qualities;
    RollingVector<BadStretch> m_bad;
    mutable CurvePyramid m_pyramid;
    std::size_t m_backSteps = 0; // points with a smaller x than their predecessor
};

} // namespace Widgets
