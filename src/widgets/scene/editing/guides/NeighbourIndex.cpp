#include "widgets/scene/editing/guides/NeighbourIndex.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Widgets {

namespace {

constexpr double bandSize = 64; // pixels

int bandOf(double at)
{
    return static_cast<int>(std::floor(at / bandSize));
}

/// A rectangle seen along the axis of the gaps.
struct Extent
{
    double begin;
    double end;
};

Extent along(const QRectF &rect, Qt::Orientation axis)
{
    return axis == Qt::Horizontal ? Extent{rect.left(), rect.right()}
                                  : Extent{rect.top(), rect.bottom()};
}

Extent across(const QRectF &rect, Qt::Orientation axis)
{
    return along(rect, axis == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal);
}

bool overlap(const Extent &a, const Extent &b)
{
    return a.begin < b.end && b.begin < a.end;
}

using Found = std::optional<QRectF>;

/// The nearest of the rectangles that ends before, or begins after, the extent.
Found before(const QVector<QRectF> &rects, const Extent &extent, Qt::Orientation axis)
{
    Found found;
    for (const QRectF &rect : rects) {
        const double end = along(rect, axis).end;
        if (end <= extent.begin && (!found || end > along(*found, axis).end))
            found = rect;
    }
    return found;
}

Found after(const QVector<QRectF> &rects, const Extent &extent, Qt::Orientation axis)
{
    Found found;
    for (const QRectF &rect : rects) {
        const double begin = along(rect, axis).begin;
        if (begin >= extent.end && (!found || begin < along(*found, axis).begin))
            found = rect;
    }
    return found;
}

/// A line from edge to edge, at the height that both have in common.
QLineF gapLine(const QRectF &first, const QRectF &second, Qt::Orientation axis)
{
    const Extent a = across(first, axis);
    const Extent b = across(second, axis);
    const double level = (std::max(a.begin, b.begin) + std::min(a.end, b.end)) / 2;
    const double from = along(first, axis).end;
    const double to = along(second, axis).begin;
    return axis == Qt::Horizontal ? QLineF(from, level, to, level) : QLineF(level, from, level, to);
}

QRectF shifted(const QRectF &rect, Qt::Orientation axis, double by)
{
    return axis == Qt::Horizontal ? rect.translated(by, 0) : rect.translated(0, by);
}

} // namespace

NeighbourIndex::NeighbourIndex(const QVector<QRectF> &rects) : m_rects(rects)
{
    for (int i = 0; i < rects.size(); ++i) {
        for (int band = bandOf(rects[i].top()); band <= bandOf(rects[i].bottom()); ++band)
            m_rows[band].append(i);
        for (int band = bandOf(rects[i].left()); band <= bandOf(rects[i].right()); ++band)
            m_columns[band].append(i);
    }
}

QVector<QRectF> NeighbourIndex::besides(const QRectF &rect, Qt::Orientation axis,
                                        const Admits &admits) const
{
    const QHash<int, QVector<int>> &bands = axis == Qt::Horizontal ? m_rows : m_columns;
    const Extent own = across(rect, axis);
    QVector<QRectF> found;
    for (int band = bandOf(own.begin); band <= bandOf(own.end); ++band) {
        for (const int index : bands.value(band)) {
            const QRectF &other = m_rects.at(index);
            if (overlap(own, across(other, axis)) && admits(other))
                found.append(other); // maybe once a band: it is the same neighbour
        }
    }
    return found;
}

QVector<NeighbourIndex::Place> NeighbourIndex::placesOf(const QRectF &moved, Qt::Orientation axis,
                                                        double distance, const Admits &admits) const
{
    QVector<Place> places;
    const QVector<QRectF> row = besides(moved, axis, admits);
    const Extent own = along(moved, axis);
    // Coming close to a neighbour, the rectangle may reach over its edge.
    const Found left = before(row, {own.begin + distance, own.end}, axis);
    const Found right = after(row, {own.begin, own.end - distance}, axis);
    const auto add = [&](double shift, const QVector<QLineF> &gaps) {
        if (std::abs(shift) <= distance)
            places.append({shift, gaps});
    };
    if (left && right) {
        const double shift =
            (along(*left, axis).end + along(*right, axis).begin - own.begin - own.end) / 2;
        const QRectF there = shifted(moved, axis, shift);
        add(shift, {gapLine(*left, there, axis), gapLine(there, *right, axis)});
    }
    if (const Found next = left ? before(row, along(*left, axis), axis) : Found()) {
        const double gap = along(*left, axis).begin - along(*next, axis).end;
        const double shift = along(*left, axis).end + gap - own.begin;
        const QRectF there = shifted(moved, axis, shift);
        add(shift, {gapLine(*next, *left, axis), gapLine(*left, there, axis)});
    }
    if (const Found next = right ? after(row, along(*right, axis), axis) : Found()) {
        const double gap = along(*next, axis).begin - along(*right, axis).end;
        const double shift = along(*right, axis).begin - gap - own.end;
        const QRectF there = shifted(moved, axis, shift);
        add(shift, {gapLine(there, *right, axis), gapLine(*right, *next, axis)});
    }
    std::stable_sort(places.begin(), places.end(), [](const Place &a, const Place &b) {
        return std::abs(a.shift) < std::abs(b.shift);
    });
    return places;
}

} // namespace Widgets
