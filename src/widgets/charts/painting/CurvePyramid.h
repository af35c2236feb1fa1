#pragma once

#include "widgets/charts/painting/CurveLevel.h"
#include "widgets/charts/painting/CurvePoints.h"

#include <vector>

namespace Widgets {

/// The levels of a curve that drawing has asked for: made when they are first needed, from the
/// next finer one when there is one, and kept up to date as points come and go. Only as many are
/// kept as the last few magnifications used.
class CurvePyramid
{
public:
    /// Finest buckets not wider than `width`; valid until the next call or change of the data.
    [[nodiscard]] const CurveLevel &level(double width, const CurvePoints &data);

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
    CurveLevel built(int exponent, const CurvePoints &data) const;

    std::vector<Kept> m_levels;
    unsigned m_use = 0;
};

} // namespace Widgets
