#include "editor/sceneview/RulerTicks.h"

#include <cmath>

namespace Editor {

namespace {

constexpr double majorDistance = 50;
constexpr double minorDistance = 4;

int majorStep(double scale)
{
    for (int decade = 1; decade < 1000000; decade *= 10) {
        for (const int factor : {1, 2, 5}) {
            if (factor * decade * scale >= majorDistance)
                return factor * decade;
        }
    }
    return 1000000;
}

int minorStep(int major, double scale)
{
    for (const int parts : {10, 5, 2}) {
        if (major % parts == 0 && major / parts * scale >= minorDistance)
            return major / parts;
    }
    return major;
}

} // namespace

QVector<RulerTick> RulerTicks(double origin, double scale, int length)
{
    QVector<RulerTick> ticks;
    if (!(scale > 0) || length <= 0)
        return ticks;
    const int major = majorStep(scale);
    const int step = minorStep(major, scale);
    const auto first = static_cast<long long>(std::ceil(origin / step)) * step;
    for (long long value = first; (value - origin) * scale < length; value += step)
        ticks.append({(value - origin) * scale, static_cast<int>(value), value % major == 0});
    return ticks;
}

} // namespace Editor
