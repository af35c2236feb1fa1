#pragma once

#include "widgets/WidgetsExport.h"

#include <qwt_scale_engine.h>

namespace Widgets {

/// Linear scale that fits itself to its curves, but never shows less than a span: the noise of a
/// signal that stands still does not look like swings.
class WIDGETS_EXPORT SpanScaleEngine : public QwtLinearScaleEngine
{
public:
    /// Of the range that a scale is given, shown at least.
    static constexpr double LeastShare = 0.05;

    /// In units of the scale; 0 or less, or no number: no limit.
    explicit SpanScaleEngine(double leastSpan) : m_leastSpan(leastSpan) {}

    void autoScale(int maxNumSteps, double &x1, double &x2, double &stepSize) const override;

private:
    double m_leastSpan;
};

} // namespace Widgets
