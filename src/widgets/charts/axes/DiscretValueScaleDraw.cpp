#include "widgets/charts/axes/DiscretValueScaleDraw.h"

#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr double band = 1.5;

} // namespace

QwtText DiscretValueScaleDraw::label(double value) const
{
    if (!std::isfinite(value))
        return {};
    // A subtraction for each band would not end for a value that it does not change.
    if (value > 1.0)
        value -= std::ceil((value - 1.0) / band) * band;
    return colored(QLatin1Char(' ') + QString::number(value, 'g', 6));
}

double DiscretValueScaleDraw::extent(const QFont &font) const
{
    const double own = QwtScaleDraw::extent(font);
    return m_delegate ? std::max(own, m_delegate->extent(font)) : own;
}

} // namespace Widgets
