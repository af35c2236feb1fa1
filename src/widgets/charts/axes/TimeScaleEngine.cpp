#include "widgets/charts/axes/TimeScaleEngine.h"

#include "widgets/charts/axes/TimeSteps.h"

#include <qwt_scale_div.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr double minute = 60 * 1000;

} // namespace

void TimeScaleEngine::autoScale(int, double &x1, double &x2, double &stepSize) const
{
    if (x1 > x2)
        std::swap(x1, x2);
    if (!std::isfinite(x1) || !std::isfinite(x2))
        x1 = x2 = 0;
    if (!(x2 - x1 >= 1))
        x2 = x1 + minute;
    stepSize = 0;
}

QwtScaleDiv TimeScaleEngine::divideScale(double x1, double x2, int maxMajorSteps, int maxMinorSteps,
                                         double) const
{
    const double lower = std::min(x1, x2);
    const double upper = std::max(x1, x2);
    QList<double> ticks[QwtScaleDiv::NTickTypes];
    if (std::isfinite(lower) && std::isfinite(upper) && upper > lower) {
        const TimeStep major = TimeSteps::forSpan(upper - lower, maxMajorSteps);
        ticks[QwtScaleDiv::MajorTick] = TimeSteps::marks(major, lower, upper);
        const auto minor = TimeSteps::between(major, maxMinorSteps);
        QList<double> minors = minor ? TimeSteps::marks(*minor, lower, upper) : QList<double>();
        for (const double tick : qAsConst(ticks[QwtScaleDiv::MajorTick]))
            minors.removeOne(tick);
        ticks[QwtScaleDiv::MinorTick] = minors;
    }
    return QwtScaleDiv(x1, x2, ticks);
}

} // namespace Widgets
