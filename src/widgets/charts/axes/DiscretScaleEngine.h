#pragma once

#include "widgets/WidgetsExport.h"

#include <qwt_scale_engine.h>

namespace Widgets {

/// Scale of signals stacked in bands of 1.5: major ticks at off and on of each band, the automatic
/// scale shows whole bands.
class WIDGETS_EXPORT DiscretScaleEngine : public QwtLinearScaleEngine
{
public:
    static constexpr double Band = 1.5;    ///< from the off line of a signal to that of the next
    static constexpr double Margin = 0.25; ///< below the lowest band and above the highest

    DiscretScaleEngine() : QwtLinearScaleEngine(10) {}

    void autoScale(int maxNumSteps, double &x1, double &x2, double &stepSize) const override;
    QwtScaleDiv divideScale(double x1, double x2, int maxMajorSteps, int maxMinorSteps,
                            double stepSize = 0.0) const override;
};

} // namespace Widgets
