#include "widgets/scene/editing/DragAndDropItem.h"

#include <QPainter>

namespace Widgets {

DragAndDropItem::DragAndDropItem(QGraphicsItem *parent) : GraphicsItem(parent) {}

void DragAndDropItem::setAcceptable(bool on)
{
    if (m_isAcceptable == on)
        return;
    m_isAcceptable = on;
    update();
}

void DragAndDropItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->fillRect(QRectF(0, 0, width(), height()),
                      QBrush(m_isAcceptable ? Qt::green : Qt::red, Qt::DiagCrossPattern));
}

} // namespace Widgets
