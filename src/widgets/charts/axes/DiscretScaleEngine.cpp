#include "widgets/charts/axes/DiscretScaleEngine.h"

#include <qwt_scale_div.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr int mostBands = 200; // more are no lines of text any more

bool isSane(double lower, double upper)
{
    return std::isfinite(lower) && std::isfinite(upper) && lower <= upper;
}

} // namespace

void DiscretScaleEngine::autoScale(int, double &x1, double &x2, double &stepSize) const
{
    if (x1 > x2)
        std::swap(x1, x2);
    if (!isSane(x1, x2)) {
        x1 = 0;
        x2 = 1;
    }
    const double lowest = std::floor(x1 / Band);
    const double highest = std::max(lowest, std::ceil((x2 - 1) / Band));
    x1 = lowest * Band - Margin;
    x2 = highest * Band + 1 + Margin;
    stepSize = Band;
}

QwtScaleDiv DiscretScaleEngine::divideScale(double x1, double x2, int maxMajorSteps,
                                            int maxMinorSteps, double stepSize) const
{
    const double lower = std::min(x1, x2);
    const double upper = std::max(x1, x2);
    if (!isSane(lower, upper) || (upper - lower) / Band > mostBands)
        return QwtLinearScaleEngine::divideScale(x1, x2, maxMajorSteps, maxMinorSteps, stepSize);
    QList<double> ticks[QwtScaleDiv::NTickTypes];
    for (double base = std::floor(lower / Band) * Band; base <= upper; base += Band) {
        for (const double tick : {base, base + 1}) {
            if (tick >= lower && tick <= upper)
                ticks[QwtScaleDiv::MajorTick] << tick;
        }
    }
    return QwtScaleDiv(x1, x2, ticks);
}

} // namespace Widgets
