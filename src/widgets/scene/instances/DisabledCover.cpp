#include "widgets/scene/instances/DisabledCover.h"

#include "widgets/elements/painting/ElementPainting.h"

#include <limits>

namespace Widgets {

DisabledCover::DisabledCover(QGraphicsItem *parent) : QGraphicsObject(parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
    setZValue(double(std::numeric_limits<int>::max()) * 2); // layers are stacked within integers
}

void DisabledCover::setSize(const QSize &size)
{
    if (size == m_size)
        return;
    prepareGeometryChange();
    m_size = size;
}

QRectF DisabledCover::boundingRect() const
{
    return {QPointF(), m_size};
}

void DisabledCover::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    ElementPainting::drawDisabledCover(*painter, boundingRect().toRect());
}

} // namespace Widgets
