#include "widgets/scene/marks/ElementOverlay.h"

#include "widgets/scene/ProxyWidget.h"

#include <QGraphicsScene>
#include <QPainterPath>

#include <limits>

namespace Widgets {

ElementOverlay::ElementOverlay(ProxyWidget &element, Level level, qreal margin)
    : m_element(&element), m_margin(margin)
{
    // Orders of layers are whole numbers of some digits.
    setZValue(double(std::numeric_limits<int>::max()) + level);
    setAcceptedMouseButtons(Qt::NoButton);
    follow();
    takeVisible();
    connect(&element, &QGraphicsWidget::geometryChanged, this, &ElementOverlay::follow);
    connect(&element, &QGraphicsObject::visibleChanged, this, &ElementOverlay::takeVisible);
    connect(&element, &QGraphicsObject::parentChanged, this, &QObject::deleteLater); // taken out
    connect(&element, &QObject::destroyed, this, &QObject::deleteLater);
    element.scene()->addItem(this);
}

QPainterPath ElementOverlay::shape() const
{
    return {};
}

QRectF ElementOverlay::inScene(QRectF rect) const
{
    const QRectF room = scene() ? scene()->sceneRect() : QRectF();
    if (rect.left() < room.left() && rect.right() > room.left())
        rect.moveLeft(room.left());
    if (rect.right() > room.right() && rect.left() < room.right())
        rect.moveRight(room.right());
    if (rect.top() < room.top() && rect.bottom() > room.top())
        rect.moveTop(room.top());
    if (rect.bottom() > room.bottom() && rect.top() < room.bottom())
        rect.moveBottom(room.bottom());
    return rect;
}

void ElementOverlay::follow()
{
    if (!m_element)
        return;
    prepareGeometryChange();
    m_place = m_element->sceneBoundingRect();
    m_outline = m_place.adjusted(-m_margin, -m_margin, m_margin, m_margin);
}

void ElementOverlay::takeVisible()
{
    setVisible(m_element && m_element->isVisible());
}

} // namespace Widgets
