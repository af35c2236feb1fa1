#include "widgets/windows/frames/FrameMapping.h"

#include <algorithm>

namespace Widgets {

FrameMapping::FrameMapping(const QPointF &origin, double scaleX, double scaleY)
    : m_origin(origin), m_scaleX(scaleX), m_scaleY(scaleY)
{
}

FrameMapping FrameMapping::asDrawn(const QPoint &origin)
{
    return {origin, 1, 1};
}

FrameMapping FrameMapping::fitted(const QRect &drawn, const QRect &area,
                                  Nodes::BasicFrame::enFit fit)
{
    if (fit == Nodes::BasicFrame::FitAsDrawn || drawn.isEmpty() || area.isEmpty())
        return asDrawn(area.topLeft());
    double x = double(area.width()) / drawn.width();
    double y = double(area.height()) / drawn.height();
    if (fit == Nodes::BasicFrame::FitInside)
        x = y = std::min(x, y);
    const QSizeF free(area.width() - x * drawn.width(), area.height() - y * drawn.height());
    const QPointF corner = area.topLeft() + QPointF(free.width() / 2, free.height() / 2);
    return {corner - QPointF(x * drawn.x(), y * drawn.y()), x, y};
}

QPointF FrameMapping::toScreen(const QPointF &node) const
{
    return m_origin + QPointF(node.x() * m_scaleX, node.y() * m_scaleY);
}

QPoint FrameMapping::toScreen(const QPoint &node) const
{
    return toScreen(QPointF(node)).toPoint();
}

QRect FrameMapping::toScreen(const QRect &node) const
{
    const QPoint topLeft = toScreen(node.topLeft());
    const QPoint end = toScreen(node.topLeft() + QPoint(node.width(), node.height()));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

QPointF FrameMapping::toNode(const QPointF &screen) const
{
    const QPointF offset = screen - m_origin;
    return {offset.x() / m_scaleX, offset.y() / m_scaleY};
}

bool FrameMapping::operator==(const FrameMapping &other) const
{
    return m_origin == other.m_origin && m_scaleX == other.m_scaleX && m_scaleY == other.m_scaleY;
}

} // namespace Widgets
