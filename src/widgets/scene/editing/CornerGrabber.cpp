#include "widgets/scene/editing/CornerGrabber.h"

#include "widgets/scene/editing/ScreenPixel.h"

#include <QCursor>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace Widgets {

CornerGrabber::CornerGrabber(QGraphicsItem *parent, Corner corner)
    : QGraphicsItem(parent), m_corner(corner)
{
    setTransformOriginPoint(boundingRect().center());
    setAcceptHoverEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
}

QRectF CornerGrabber::boundingRect() const
{
    return QRectF(0, 0, side, side);
}

QPainterPath CornerGrabber::shape() const
{
    QPainterPath shape;
    shape.addRect(boundingRect());
    const double pixel = screenPixel(*this);
    const QRectF owner = parentItem() ? parentItem()->boundingRect() : QRectF();
    if (qMin(owner.width(), owner.height()) >= 3 * side * pixel)
        return shape;
    QPainterPath inside;
    inside.addRect(mapRectFromParent(owner.adjusted(pixel, pixel, -pixel, -pixel)));
    return shape.subtracted(inside);
}

void CornerGrabber::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setClipRect(boundingRect().adjusted(-1, -1, 1, 1));
    painter->setPen(m_pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(boundingRect());
}

void CornerGrabber::setColor(const QColor &color)
{
    m_pen.setColor(color);
    update();
}

void CornerGrabber::hoverEnterEvent(QGraphicsSceneHoverEvent *)
{
    setCursor(cornerCursor(m_corner));
    setColor(Qt::red);
}

void CornerGrabber::hoverLeaveEvent(QGraphicsSceneHoverEvent *)
{
    setColor(Qt::black);
}

void CornerGrabber::mousePressEvent(QGraphicsSceneMouseEvent *event)
{
    event->accept();
}

} // namespace Widgets
