#include "widgets/charts/axes/SpanScaleEngine.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

void SpanScaleEngine::autoScale(int maxNumSteps, double &x1, double &x2, double &stepSize) const
{
    const double missing = m_leastSpan - std::abs(x2 - x1);
    if (std::isfinite(missing) && missing > 0) {
        const double lower = std::min(x1, x2) - missing / 2;
        x1 = lower;
        x2 = lower + m_leastSpan;
    }
    QwtLinearScaleEngine::autoScale(maxNumSteps, x1, x2, stepSize);
}

} // namespace Widgets
