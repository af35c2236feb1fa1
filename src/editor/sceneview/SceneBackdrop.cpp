#include "editor/sceneview/SceneBackdrop.h"

#include <QPainter>
#include <QPixmap>

#include <cmath>

namespace Editor {

namespace {

const QColor deskColor(0xa4, 0xac, 0xb3);
const QColor deskEdge(0x5a, 0x64, 0x6c);
const QColor lightColor(0xf4, 0xf6, 0xf7);
const QColor darkColor(0x2a, 0x30, 0x36);

constexpr int checkerSize = 8;
constexpr double leastDotDistance = 10;

QPixmap makeChecker()
{
    QPixmap tile(2 * checkerSize, 2 * checkerSize);
    tile.fill(Qt::white);
    QPainter painter(&tile);
    const QColor dark(0xcc, 0xcc, 0xcc);
    painter.fillRect(0, 0, checkerSize, checkerSize, dark);
    painter.fillRect(checkerSize, checkerSize, checkerSize, checkerSize, dark);
    return tile;
}

} // namespace

QColor SceneBackdrop::pageColor() const
{
    switch (kind) {
    case Light:
        return lightColor;
    case Dark:
        return darkColor;
    default:
        return projectColor;
    }
}

void SceneBackdrop::paint(QPainter &painter, const QRectF &exposed, const QRectF &page) const
{
    painter.fillRect(exposed, deskColor);
    const QRectF area = exposed & page;
    if (!area.isEmpty() && kind == Checker)
        paintChecker(painter, area);
    else if (!area.isEmpty())
        painter.fillRect(area, pageColor());
    if (!area.isEmpty() && gridStep > 0)
        paintGrid(painter, area);
    painter.setPen(QPen(deskEdge, 0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(page);
}

// In pixels of the screen, whatever the zoom.
void SceneBackdrop::paintChecker(QPainter &painter, const QRectF &area) const
{
    static const QPixmap tile = makeChecker();
    const QTransform toScreen = painter.worldTransform();
    painter.save();
    painter.resetTransform();
    painter.drawTiledPixmap(toScreen.mapRect(area), tile);
    painter.restore();
}

void SceneBackdrop::paintGrid(QPainter &painter, const QRectF &area) const
{
    const double scale = std::abs(painter.worldTransform().m11());
    double step = gridStep;
    while (step * scale < leastDotDistance)
        step *= 2;
    const bool isDark = kind != Checker && pageColor().lightness() < 128;
    painter.setPen(QPen(isDark ? QColor(255, 255, 255, 110) : QColor(0, 0, 0, 90), 0));
    QVector<QPointF> points;
    for (double y = std::ceil(area.top() / step) * step; y < area.bottom(); y += step) {
        for (double x = std::ceil(area.left() / step) * step; x < area.right(); x += step)
            points.append({x, y});
    }
    painter.drawPoints(points.constData(), points.size());
}

} // namespace Editor
