#include "widgets/scene/editing/CornerGrabber.h"

#include <QCursor>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>

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
