#include "widgets/reports/engine/pages/ShapePainting.h"

#include "widgets/reports/engine/template/TemplateItem.h"

#include <QImage>
#include <QLineF>
#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QVector>

namespace LimeReport {

namespace {

enum ShapeType { HorizontalLine = 0, VerticalLine = 1, Ellipse = 2, Rectangle = 3 };
enum Border { Top = 1, Bottom = 2, Left = 4, Right = 8, All = 15 };

int shapeType(const TemplateItem &source)
{
    for (const char *key : {"shape", "shapeType"}) {
        const QString name = source.text(QLatin1String(key));
        if (name == QLatin1String("VerticalLine"))
            return VerticalLine;
        if (name == QLatin1String("Ellipse"))
            return Ellipse;
        if (name == QLatin1String("Rectangle"))
            return Rectangle;
        if (source.has(QLatin1String(key)))
            return source.integer(QLatin1String(key));
    }
    return HorizontalLine;
}

constexpr double widestSheet = 50000; // 0.1 mm

QPen linePen(const QColor &color, double width, int style)
{
    QPen pen(color, qBound(0.0, width, 200.0));
    if (style >= Qt::NoPen && style <= Qt::DashDotDotLine)
        pen.setStyle(Qt::PenStyle(style));
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

// Filled for bad, an outline for what is uncertain or stale.
void paintCorner(QPainter &painter, const QRectF &rect, Nodes::Quality quality)
{
    const bool isBad = quality == Nodes::Quality::Bad;
    const QColor mark = isBad ? QColor(0xa0, 0x1c, 0x1c) : QColor(0x8a, 0x5a, 0x00);
    const double side = qMin(18.0, qMin(rect.width(), rect.height()) / 2);
    painter.setPen(QPen(mark, 2));
    painter.setBrush(isBad ? mark : QColor(Qt::white));
    painter.drawPolygon(QPolygonF(
        {rect.topLeft(), rect.topLeft() + QPointF(side, 0), rect.topLeft() + QPointF(0, side)}));
}

} // namespace

void paintShape(QPainter &painter, const QRectF &rect, const TemplateItem &source)
{
    const QPen pen = linePen(source.color(QStringLiteral("shapeColor"), Qt::black),
                             source.real(QStringLiteral("lineWidth"), 1),
                             source.integer(QStringLiteral("penStyle"), Qt::SolidLine));
    painter.save();
    painter.setPen(pen);
    const int brush = source.integer(QStringLiteral("shapeBrush"));
    painter.setBrush(brush > Qt::NoBrush && brush <= Qt::DiagCrossPattern
                         ? QBrush(source.color(QStringLiteral("shapeBrushColor"), Qt::white),
                                  Qt::BrushStyle(brush))
                         : QBrush());
    const double half = pen.style() == Qt::NoPen ? 0 : pen.widthF() / 2;
    const QRectF inner = rect.adjusted(half, half, -half, -half);
    const double radius = qMax(0.0, source.real(QStringLiteral("cornerRadius")));
    switch (shapeType(source)) {
    case VerticalLine:
        painter.drawLine(QPointF(rect.center().x(), rect.top()),
                         QPointF(rect.center().x(), rect.bottom()));
        break;
    case Ellipse:
        painter.drawEllipse(inner);
        break;
    case Rectangle:
        painter.drawRoundedRect(inner, radius, radius);
        break;
    default:
        painter.drawLine(QPointF(rect.left(), rect.center().y()),
                         QPointF(rect.right(), rect.center().y()));
    }
    painter.restore();
}

void paintBorders(QPainter &painter, const QRectF &rect, const TemplateItem &source)
{
    const int borders = source.integer(QStringLiteral("borders"));
    if ((borders & All) == 0)
        return;
    QPen pen = linePen(source.color(QStringLiteral("borderColor"), Qt::black),
                       source.real(QStringLiteral("borderLineSize"), 1),
                       source.integer(QStringLiteral("borderStyle"), Qt::SolidLine));
    pen.setCapStyle(Qt::SquareCap);
    painter.setPen(pen);
    if ((borders & All) == All) {
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rect);
        return;
    }
    QVector<QLineF> lines;
    if (borders & Top)
        lines.append({rect.topLeft(), rect.topRight()});
    if (borders & Bottom)
        lines.append({rect.bottomLeft(), rect.bottomRight()});
    if (borders & Left)
        lines.append({rect.topLeft(), rect.bottomLeft()});
    if (borders & Right)
        lines.append({rect.topRight(), rect.bottomRight()});
    painter.drawLines(lines);
}

void paintPicture(QPainter &painter, const QRectF &rect, const QImage &image,
                  const TemplateItem &source)
{
    QRectF target = rect;
    const bool isScaled = source.flag(QStringLiteral("scale"), true);
    if (!isScaled)
        target.setSize(QSizeF(image.size()) * 254.0 / 96.0);
    else if (source.flag(QStringLiteral("keepAspectRatio"), true))
        target.setSize(QSizeF(image.size()).scaled(rect.size(), Qt::KeepAspectRatio));
    if (source.flag(QStringLiteral("center"), true))
        target.moveCenter(rect.center());
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, image);
    painter.restore();
}

void paintQuality(QPainter &painter, const QRectF &rect, Nodes::Quality quality, bool isMarked)
{
    if (quality == Nodes::Quality::Good)
        return;
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.setPen(QPen(QColor(0xd0, 0xd0, 0xd0), 1));
    const double last = qMin(rect.right(), widestSheet);
    for (double x = qMax(rect.left(), 0.0) - qMin(rect.height(), widestSheet); x < last; x += 15)
        painter.drawLine(QPointF(x, rect.bottom()), QPointF(x + rect.height(), rect.top()));
    if (isMarked)
        paintCorner(painter, rect, quality);
    painter.restore();
}

} // namespace LimeReport
