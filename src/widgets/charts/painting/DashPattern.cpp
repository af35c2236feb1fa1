#include "widgets/charts/painting/DashPattern.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

DashPattern::DashPattern(const QPen &pen, int width, double origin)
{
    if (pen.style() != Qt::SolidLine)
        setLengths(pen.dashPattern(), width, origin);
}

DashPattern DashPattern::dotted(int width, double origin)
{
    DashPattern dots;
    dots.setLengths({2.0 + width, 2.0 + width}, 1, origin);
    return dots;
}

void DashPattern::setLengths(const QVector<qreal> &lengths, double width, double origin)
{
    double end = 0;
    for (const qreal length : lengths) {
        end += length * width;
        m_ends.push_back(std::max(int(std::lround(end)), m_ends.empty() ? 1 : m_ends.back() + 1));
    }
    if (m_ends.size() % 2 != 0)
        m_ends.clear();
    if (!m_ends.empty())
        m_origin = int(std::lround(std::fmod(origin, m_ends.back())));
}

bool DashPattern::isOn(int pixel) const
{
    if (m_ends.empty())
        return true;
    const int total = m_ends.back();
    const int phase = ((pixel - m_origin) % total + total) % total;
    const auto found = std::upper_bound(m_ends.begin(), m_ends.end(), phase);
    return (found - m_ends.begin()) % 2 == 0;
}

} // namespace Widgets
