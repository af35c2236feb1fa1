#pragma once

#include "widgets/WidgetsExport.h"

#include <QVector>

namespace Widgets {

/// Round numbers that divide a scale. A plain value.
struct WIDGETS_EXPORT ScaleTicks
{
    QVector<double> major; ///< ascending, within the range; these get a number
    QVector<double> minor;
    int decimals = 0; ///< of the numbers

    /// At most `divisions` (1 and more) major parts, each 1, 2 or 5 times a power of ten. No ticks
    /// for a range that is empty, not finite or too narrow for the size of its numbers, nor where
    /// they would be more than 1000.
    static ScaleTicks make(double minimum, double maximum, int divisions);
};

} // namespace Widgets
