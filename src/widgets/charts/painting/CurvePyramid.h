#pragma once

#include "widgets/charts/painting/CurveLevel.h"
#include "widgets/charts/painting/CurvePoints.h"

#include <vector>

namespace Widgets {

/// The levels of a curve that drawing has asked for: made when they are first needed, from the
/// next finer one when there is one, and kept up to date as points come and go. Only as many are
/// kept as the last few magnifications used.
///
/// Any magnification finds buckets of a power of two; one that stays, because the chart is panned
/// or follows the present, gets buckets of exactly a pixel column.
class CurvePyramid
{
public:
    /// Finest buckets not wider than `width`; valid until the next call or change of the data.
    [[nodiscard]] const CurveLevel &level(double width, const CurvePoints &data);

    /// Buckets as wide as `width`, up to a small part of a pixel over a whole canvas; null until
    /// the same has been asked for a few times running.
    [[nodiscard]] const CurveLevel *columns(double width, const CurvePoints &data);
    /// The one with the fewest buckets; null without any.
    [[nodiscard]] const CurveLevel *coarsest() const;

    void append(const QPointF &point, Nodes::Quality quality, bool isDrawn);
    /// To be called after the points have gone.
    void trimFront(const CurvePoints &data);
    void clear();

private:
    struct Kept
    {
        CurveLevel level;
        unsigned lastUse;
    };
    const CurveLevel &kept(double width, const CurvePoints &data);
    CurveLevel built(double width, const CurvePoints &data) const;

    std::vector<Kept> m_levels;
    unsigned m_use = 0;
    double m_lastWidth = 0;
    int m_askedForLast = 0;
};

} // namespace Widgets
