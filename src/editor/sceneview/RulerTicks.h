#pragma once

#include <QVector>

namespace Editor {

/// Marks of a ruler.
struct RulerTick
{
    double at = 0;        ///< pixel of the ruler
    int value = 0;        ///< scene pixel
    bool isMajor = false; ///< long, with its value
};

/// Marks for `length` pixels of a ruler whose first pixel shows the scene at `origin`, `scale`
/// pixels a scene pixel. Major marks are at least 50 pixels apart, at 1, 2 or 5 times a power of
/// ten; minor ones divide them by ten, five or two, at least 4 pixels apart. None for a
/// scale that is not positive.
QVector<RulerTick> RulerTicks(double origin, double scale, int length);

} // namespace Editor
