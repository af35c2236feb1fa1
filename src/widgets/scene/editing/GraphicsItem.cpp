#include "widgets/scene/editing/GraphicsItem.h"

namespace Widgets {

GraphicsItem::GraphicsItem(QGraphicsItem *parent) : QGraphicsItem(parent)
{
    setAcceptedMouseButtons(Qt::NoButton);
}

void GraphicsItem::setSize(double width, double height)
{
    if (width == m_width && height == m_height)
        return;
    prepareGeometryChange();
    m_width = width;
    m_height = height;
}

QRectF GraphicsItem::boundingRect() const
{
    return QRectF(-1, -1, m_width + 2, m_height + 2);
}

} // namespace Widgets
