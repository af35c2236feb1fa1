#pragma once

#include "widgets/WidgetsExport.h"

#include <qwt_scale_engine.h>

namespace Widgets {

/// Scale of X values that are times (ChartTime): ticks stand on whole seconds, minutes, hours,
/// days, Mondays, months or years of local time, also where clocks are set forward or back.
class WIDGETS_EXPORT TimeScaleEngine : public QwtScaleEngine
{
public:
    /// Leaves the ends where they are; an empty interval becomes a minute.
    void autoScale(int maxNumSteps, double &x1, double &x2, double &stepSize) const override;
    /// `stepSize` is not heeded: steps of a calendar have no length.
    QwtScaleDiv divideScale(double x1, double x2, int maxMajorSteps, int maxMinorSteps,
                            double stepSize = 0.0) const override;
};

} // namespace Widgets
