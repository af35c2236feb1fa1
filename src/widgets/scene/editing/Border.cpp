#include "widgets/scene/editing/Border.h"

#include <QPainter>

#include <cmath>

namespace Widgets {

Border::Border(QGraphicsItem *parent) : GraphicsItem(parent) {}

void Border::setOutline(bool on)
{
    if (m_hasOutline == on)
        return;
    m_hasOutline = on;
    update();
}

void Border::setOutside(bool on)
{
    if (m_isOutside == on)
        return;
    m_isOutside = on;
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
    // Half a pixel off the element: of the screen, where the picture is shown large.
    const double nearer = 0.5 - 0.5 / qMax(1.0, std::abs(painter->worldTransform().m11()));
    const double inset = m_isOutside ? nearer : -nearer;
    painter->drawRect(rect.adjusted(inset, inset, -inset, -inset));
}

} // namespace Widgets
