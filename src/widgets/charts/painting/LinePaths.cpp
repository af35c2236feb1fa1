#include "widgets/charts/painting/LinePaths.h"

#include <QPainter>

#include <cmath>

namespace Widgets {

namespace {

/// Shortens the piece from `a` to `b` to what is inside; false when nothing is (Liang-Barsky).
bool clipPiece(const QRectF &clip, QPointF &a, QPointF &b)
{
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    const double p[] = {-dx, dx, -dy, dy};
    const double q[] = {a.x() - clip.left(), clip.right() - a.x(), a.y() - clip.top(),
                        clip.bottom() - a.y()};
    double enters = 0;
    double leaves = 1;
    for (int side = 0; side < 4; ++side) {
        if (p[side] == 0) {
            if (q[side] < 0)
                return false;
        } else if (p[side] < 0) {
            enters = qMax(enters, q[side] / p[side]);
        } else {
            leaves = qMin(leaves, q[side] / p[side]);
        }
    }
    if (enters > leaves)
        return false;
    const QPointF from = a;
    if (leaves < 1)
        b = from + leaves * QPointF(dx, dy);
    if (enters > 0)
        a = from + enters * QPointF(dx, dy);
    return true;
}

} // namespace

void LinePaths::moveTo(double x, double y)
{
    endPath();
    m_at = {x, y};
}

void LinePaths::lineTo(double x, double y, bool isDoubtful)
{
    add(m_at, {x, y}, isDoubtful);
    m_at = {x, y};
}

void LinePaths::spread(double xLow, double low, double xHigh, double high, double x, double y,
                       bool isDoubtful)
{
    const bool lowFirst = xLow < xHigh;
    lineTo(lowFirst ? xLow : xHigh, lowFirst ? low : high, isDoubtful);
    lineTo(lowFirst ? xHigh : xLow, lowFirst ? high : low, isDoubtful);
    lineTo(x, y, isDoubtful);
}

void LinePaths::stick(double x, double from, double to, bool isDoubtful)
{
    moveTo(x, from);
    lineTo(x, to, isDoubtful);
}

void LinePaths::add(const QPointF &from, const QPointF &to, bool isDoubtful)
{
    QPointF a = from;
    QPointF b = to;
    if (!clipPiece(m_clip, a, b)) {
        endPath();
        return;
    }
    if (m_path.isEmpty() || isDoubtful != m_pathIsDoubtful || m_path.last() != a) {
        endPath();
        m_pathIsDoubtful = isDoubtful;
        m_path.append(a);
    }
    m_path.append(b);
}

void LinePaths::endPath()
{
    if (m_path.size() > 1)
        (m_pathIsDoubtful ? m_doubtful : m_good).push_back(m_path);
    m_path.clear();
}

void LinePaths::paint(QPainter &painter, const QPen &pen)
{
    endPath();
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    for (const QPolygonF &path : m_good)
        painter.drawPolyline(path);
    QPen dots = pen;
    dots.setDashPattern({2, 3});
    dots.setCapStyle(Qt::FlatCap);
    painter.setPen(dots);
    for (const QPolygonF &path : m_doubtful)
        painter.drawPolyline(path);
    m_good.clear();
    m_doubtful.clear();
}

} // namespace Widgets
