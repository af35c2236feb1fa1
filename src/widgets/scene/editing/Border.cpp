#include "widgets/scene/editing/Border.h"

#include <QPainter>

namespace Widgets {

Border::Border(QGraphicsItem *parent) : GraphicsItem(parent) {}

void Border::setOutline(bool on)
{
    if (m_hasOutline == on)
        return;
    m_hasOutline = on;
    update();
}

void Border::setShade(bool on)
{
    if (m_hasShade == on)
        return;
    m_hasShade = on;
    update();
}

void Border::setCovered(bool on)
{
    if (m_isCovered == on)
        return;
    m_isCovered = on;
    update();
}

void Border::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const QRectF rect(0, 0, width(), height());
    painter->setClipRect(boundingRect());
    if (m_hasShade)
        painter->fillRect(rect, QColor(128, 128, 128, 128));
    if (!m_hasOutline || m_isCovered)
        return;
    QPen pen(Qt::gray, 1, Qt::DashLine, Qt::SquareCap, Qt::MiterJoin);
    pen.setCosmetic(true); // as fine at any zoom
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect);
}

} // namespace Widgets
