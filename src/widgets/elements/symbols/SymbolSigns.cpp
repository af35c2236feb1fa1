#include "widgets/elements/symbols/SymbolSigns.h"

#include "widgets/elements/symbols/SymbolStyle.h"

#include <QPainter>

namespace Widgets {

namespace {

const QColor inkColor(74, 83, 91);

void drawFault(QPainter &painter, const QRectF &area, double side)
{
    const QRectF box(area.right() - side, area.bottom() - side, side, side);
    const QPointF centre = box.center();
    painter.setPen(QPen(Qt::white, 1.5));
    painter.setBrush(SymbolStyle::FaultColor);
    painter.drawPolygon(QPolygonF({{centre.x(), box.top()},
                                   {box.right(), centre.y()},
                                   {centre.x(), box.bottom()},
                                   {box.left(), centre.y()}}));
    painter.setPen(QPen(Qt::white, side * 0.13, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QLineF(centre.x(), box.top() + side * 0.22, centre.x(), centre.y() + 1));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(centre.x(), box.top() + side * 0.72), side * 0.08, side * 0.08);
}

void drawQuestion(QPainter &painter, const QRectF &area, double side)
{
    QRectF box(0, 0, side, side);
    box.moveCenter(area.center());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 230));
    painter.drawEllipse(box);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(1, int(side * 0.8)));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(inkColor);
    painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, QStringLiteral("?"));
}

} // namespace

void SymbolSigns::draw(QPainter &painter, const QRectF &area, Nodes::SymbolLook look)
{
    const double shorter = qMin(area.width(), area.height());
    if (shorter < 4 || (look != Nodes::SymbolLook::Fault && look != Nodes::SymbolLook::Unknown))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = qMin(shorter, qBound(12.0, shorter * 0.4, 28.0));
    if (look == Nodes::SymbolLook::Fault)
        drawFault(painter, area, side);
    else
        drawQuestion(painter, area, side);
    painter.restore();
}

} // namespace Widgets
