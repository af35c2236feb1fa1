#include "widgets/charts/painting/CurveData.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace Widgets {

bool CurveData::isDrawn(std::size_t i) const
{
    return CurvePoints::isDrawn(m_points[i], m_qualities[i]);
}

QRectF CurveData::boundingRect() const
{
    if (d_boundingRect.width() < 0)
        findRect();
    return d_boundingRect;
}

/// A level that drawing keeps tells the extremes of many points at once: a chart that follows the
/// present trims its curves, and so asks again, with every replot.
void CurveData::findRect() const
{
    if (const CurveLevel *level = isSorted() ? m_pyramid.coarsest() : nullptr) {
        for (const CurveBucket &bucket : level->buckets()) {
            extendRect({level->xOf(bucket, bucket.firstX), bucket.lowY});
            extendRect({level->xOf(bucket, bucket.lastX), bucket.highY});
        }
        return;
    }
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        if (isDrawn(i))
            extendRect(m_points[i]);
    }
}

void CurveData::extendRect(const QPointF &point) const
{
    if (d_boundingRect.width() < 0) {
        d_boundingRect = QRectF(point, QSizeF(0, 0));
        return;
    }
    d_boundingRect.setLeft(qMin(d_boundingRect.left(), point.x()));
    d_boundingRect.setRight(qMax(d_boundingRect.right(), point.x()));
    d_boundingRect.setTop(qMin(d_boundingRect.top(), point.y()));
    d_boundingRect.setBottom(qMax(d_boundingRect.bottom(), point.y()));
}

void CurveData::append(const QPointF &added, Nodes::Quality quality)
{
    QPointF point = added;
    if (!std::isfinite(point.x())) {
        if (m_points.empty())
            return;
        point = {m_points.back().x(), std::numeric_limits<double>::quiet_NaN()};
    }
    const bool drawn = CurvePoints::isDrawn(point, quality);
    // Without a rectangle it is known for the first point only: the next question finds it.
    if (drawn && (d_boundingRect.width() >= 0 || m_points.empty()))
        extendRect(point);
    noteBad(point.x(), quality);
    if (!m_points.empty() && point.x() < m_points.back().x()) {
        ++m_backSteps;
        m_pyramid.clear();
    }
    m_points.push_back(point);
    m_qualities.push_back(quality);
    if (m_backSteps == 0)
        m_pyramid.append(point, quality, drawn);
}

/// A bad stretch begins with its first bad point and ends where a trustworthy one comes.
void CurveData::noteBad(double x, Nodes::Quality quality)
{
    const bool wasBad = !m_qualities.empty() && m_qualities.back() == Nodes::Quality::Bad;
    if (wasBad && !m_bad.empty())
        m_bad.back().to = std::max(m_bad.back().to, x);
    else if (quality == Nodes::Quality::Bad)
        m_bad.push_back({x, x});
}

QPointF CurveData::last() const
{
    return m_points.empty() ? QPointF() : m_points.back();
}

void CurveData::reserve(std::size_t count)
{
    m_points.reserve(count);
    m_qualities.reserve(count);
}

void CurveData::clear()
{
    m_points.clear();
    m_qualities.clear();
    m_bad.clear();
    m_pyramid.clear();
    m_backSteps = 0;
    d_boundingRect = QRectF(0, 0, -1, -1);
}

void CurveData::trimFront(std::size_t count)
{
    if (count == 0)
        return;
    if (count >= m_points.size()) {
        clear();
        return;
    }
    const bool wasSorted = isSorted();
    for (std::size_t i = 0; i < count && !wasSorted; ++i) {
        if (m_points[i + 1].x() < m_points[i].x())
            --m_backSteps;
    }
    m_points.trimFront(count);
    m_qualities.trimFront(count);
    d_boundingRect = QRectF(0, 0, -1, -1);
    std::size_t gone = 0;
    while (isSorted() && gone < m_bad.size() && m_bad[gone].to < m_points.front().x())
        ++gone;
    m_bad.trimFront(gone);
    if (wasSorted)
        m_pyramid.trimFront(view());
}

void CurveData::sort()
{
    std::vector<std::size_t> order(m_points.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
        return m_points[a].x() < m_points[b].x();
    });
    const RollingVector<QPointF> points = std::move(m_points);
    const RollingVector<Nodes::Quality> qualities = std::move(m_qualities);
    clear();
    reserve(order.size());
    for (const std::size_t i : order) {
        const bool repeats = !m_points.empty() && m_points.back().x() == points[i].x() &&
                             m_points.back().y() == points[i].y() &&
                             m_qualities.back() == qualities[i];
        if (!repeats)
            append(points[i], qualities[i]);
    }
}

std::size_t CurveData::indexAt(double x) const
{
    const QPointF *found =
        std::lower_bound(m_points.begin(), m_points.end(), x,
                         [](const QPointF &point, double at) { return point.x() < at; });
    return std::size_t(found - m_points.begin());
}

CurvePoints CurveData::view() const
{
    return {m_points.data(), m_qualities.data(), m_points.size()};
}

const CurveLevel &CurveData::level(double width) const
{
    return m_pyramid.level(width, view());
}

const CurveLevel *CurveData::columns(double width) const
{
    return m_pyramid.columns(width, view());
}

} // namespace Widgets
