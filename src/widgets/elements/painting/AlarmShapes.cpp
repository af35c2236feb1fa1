#include "widgets/elements/painting/AlarmShapes.h"

#include <QPainter>
#include <QPolygonF>

namespace Widgets {

namespace {

QPolygonF shapeOf(int priority, const QRectF &r)
{
    if (priority == 2)
        return QPolygonF() << QPointF(r.center().x(), r.top()) << r.bottomRight() << r.bottomLeft();
    if (priority == 3)
        return QPolygonF() << QPointF(r.center().x(), r.top()) << QPointF(r.right(), r.center().y())
                           << QPointF(r.center().x(), r.bottom())
                           << QPointF(r.left(), r.center().y());
    return QPolygonF(r);
}

} // namespace

QColor AlarmShapes::color(int priority)
{
    switch (priority) {
    case 1:
        return {198, 40, 40};
    case 2:
        return {240, 180, 0};
    case 3:
        return {255, 224, 120};
    default:
        return {150, 196, 224};
    }
}

QColor AlarmShapes::ink(int priority)
{
    return priority == 1 ? QColor(Qt::white) : QColor(0x1c, 0x20, 0x24);
}

void AlarmShapes::draw(QPainter &painter, int priority, const QRectF &rect)
{
    if (priority > 3)
        painter.drawEllipse(rect);
    else
        painter.drawPolygon(shapeOf(priority, rect));
}

void AlarmShapes::drawNumbered(QPainter &painter, int priority, const QRectF &rect,
                               const QColor &number)
{
    draw(painter, priority, rect);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(1, int(rect.height() * 0.6)));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(number);
    // The room of a triangle is below.
    const QRectF room = rect.translated(0, priority == 2 ? rect.height() / 7 : 0);
    painter.drawText(room, Qt::AlignCenter, QString::number(priority));
}

} // namespace Widgets
