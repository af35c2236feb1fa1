#include "widgets/scene/editing/guides/EdgeIndex.h"

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr double samePlace =
    0.51; // pixels; centres of odd sizes lie on halves, nothing stands there

// QRectF unites nothing with a rectangle without an area.
QRectF united(const QRectF &a, const QRectF &b)
{
    return QRectF(QPointF(std::min(a.left(), b.left()), std::min(a.top(), b.top())),
                  QPointF(std::max(a.right(), b.right()), std::max(a.bottom(), b.bottom())));
}

} // namespace

EdgeIndex::EdgeIndex(const QVector<QRectF> &rects, Qt::Orientation axis)
{
    m_lines.reserve(3 * rects.size());
    for (const QRectF &rect : rects) {
        const bool isAcross = axis == Qt::Horizontal;
        const double begin = isAcross ? rect.left() : rect.top();
        const double end = isAcross ? rect.right() : rect.bottom();
        for (const double at : {begin, (begin + end) / 2, end})
            m_lines.append({at, rect});
    }
    std::sort(m_lines.begin(), m_lines.end(),
              [](const Line &a, const Line &b) { return a.at < b.at; });
}

EdgeIndex::Lines::const_iterator EdgeIndex::firstFrom(double at) const
{
    return std::lower_bound(m_lines.begin(), m_lines.end(), at,
                            [](const Line &line, double value) { return line.at < value; });
}

std::optional<double> EdgeIndex::nearest(double at, double distance, const Admits &admits) const
{
    std::optional<double> found;
    double best = distance;
    for (auto line = firstFrom(at - distance); line != m_lines.end() && line->at <= at + distance;
         ++line) {
        const double away = std::abs(line->at - at);
        if (away > best || (found && away == best) || !admits(line->rect))
            continue;
        best = away;
        found = line->at;
    }
    return found;
}

QRectF EdgeIndex::unitedAt(double at, const Admits &admits) const
{
    std::optional<QRectF> all;
    for (auto line = firstFrom(at - samePlace); line != m_lines.end() && line->at <= at + samePlace;
         ++line) {
        if (admits(line->rect))
            all = all ? united(*all, line->rect) : line->rect;
    }
    return all.value_or(QRectF());
}

} // namespace Widgets
