#include "widgets/elements/painting/ScaleTicks.h"

#include <cmath>

namespace Widgets {

namespace {

constexpr double most = 1000;         // nobody reads more
constexpr double largest = 1LL << 53; // up to here neighbouring whole numbers differ

QVector<double> multiples(double minimum, double maximum, double step)
{
    QVector<double> ticks;
    const double first = std::ceil(minimum / step - 1e-9);
    const double last = std::floor(maximum / step + 1e-9);
    if (qAbs(first) > largest || qAbs(last) > largest || last - first > most)
        return ticks;
    for (int i = 0; i <= int(last - first); ++i)
        ticks << (first + i) * step;
    return ticks;
}

} // namespace

ScaleTicks ScaleTicks::make(double minimum, double maximum, int divisions)
{
    ScaleTicks ticks;
    const double raw = (maximum - minimum) / qMax(1, divisions);
    if (!std::isfinite(raw) || raw <= 0)
        return ticks;
    int exponent = static_cast<int>(std::floor(std::log10(raw) + 1e-9));
    const double fraction = raw / std::pow(10.0, exponent) - 1e-9;
    double digit = fraction <= 1 ? 1 : fraction <= 2 ? 2 : fraction <= 5 ? 5 : 10;
    if (digit == 10) {
        digit = 1;
        ++exponent;
    }
    const double step = digit * std::pow(10.0, exponent);
    ticks.major = multiples(minimum, maximum, step);
    ticks.minor = multiples(minimum, maximum, step / (digit == 2 ? 4 : 5));
    ticks.decimals = qMax(0, -exponent);
    return ticks;
}

} // namespace Widgets
