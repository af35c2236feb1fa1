#include "widgets/charts/pickers/CursorMarkers.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

#include <qwt_plot.h>
#include <qwt_text.h>

namespace Widgets {

namespace {

constexpr double gap = 10;    // pixels between a point and its label
constexpr double padding = 4; // inside of a label

bool isFree(const QRectF &rect, const std::vector<QRectF> &taken)
{
    return std::none_of(taken.begin(), taken.end(),
                        [&rect](const QRectF &other) { return other.intersects(rect); });
}

// Nearest place in the column at that x: level with the anchor, then a little off, and so on.
QRectF placeInColumn(double x, const QPointF &anchor, const QSizeF &size,
                     const std::vector<QRectF> &taken, const QRectF &canvas)
{
    const double step = size.height() / 2 + 1;
    const int steps = int(std::ceil(canvas.height() / step));
    const double lowest = canvas.bottom() - size.height();
    const double level = qBound(canvas.top(), anchor.y() - size.height() / 2, lowest);
    for (int i = 0; i <= steps; ++i)
        for (const double direction : {-1.0, 1.0}) {
            const QRectF rect(QPointF(x, level + direction * i * step), size);
            if (rect.top() >= canvas.top() && rect.top() <= lowest && isFree(rect, taken))
                return rect;
        }
    return {};
}

} // namespace

CursorMarker::CursorMarker(const QString &title, const QColor &frame)
    : MultiAxisItem(title), m_frame(frame)
{
}

void CursorMarker::drawLabel(QPainter *, const QRectF &canvasRect, const QPointF &pos) const
{
    m_anchor = pos;
    m_canvas = canvasRect;
}

void CursorLine::drawLabel(QPainter *painter, const QRectF &canvasRect, const QPointF &pos) const
{
    m_rect = QRectF();
    if (label().isEmpty() || pos.x() < canvasRect.left() || pos.x() > canvasRect.right())
        return;
    const QSizeF size = label().textSize(painter->font()).transposed();
    const double room = size.width() + spacing() + linePen().widthF();
    QPointF place = pos;
    if (pos.x() - room < canvasRect.left())
        place.rx() += room + spacing() + linePen().widthF();
    m_rect = QRectF(place.x() - room, canvasRect.bottom() - size.height() - spacing(), room,
                    size.height() + spacing());
    QwtPlotMarker::drawLabel(painter, canvasRect, place);
}

CursorLabels::CursorLabels(std::vector<const CursorMarker *> markers,
                           std::vector<const CursorLine *> lines)
    : m_markers(std::move(markers)), m_lines(std::move(lines))
{
    setZ(100);
}

std::vector<QRectF> CursorLabels::arrange(const std::vector<QPointF> &anchors,
                                          const std::vector<QSizeF> &sizes,
                                          const std::vector<QRectF> &obstacles,
                                          const QRectF &canvas)
{
    std::vector<QRectF> places(anchors.size());
    std::vector<QRectF> taken = obstacles;
    std::vector<std::size_t> order(anchors.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(), [&anchors](std::size_t a, std::size_t b) {
        return anchors[a].y() < anchors[b].y();
    });
    for (const std::size_t i : order) {
        const double right = anchors[i].x() + gap;
        const double left = anchors[i].x() - gap - sizes[i].width();
        const bool fitsRight = right + sizes[i].width() <= canvas.right();
        for (const bool isRight : {fitsRight, !fitsRight}) {
            const double x = isRight ? right : left;
            if (x < canvas.left() || x + sizes[i].width() > canvas.right())
                continue;
            places[i] = placeInColumn(x, anchors[i], sizes[i], taken, canvas);
            if (!places[i].isNull())
                break;
        }
        if (!places[i].isNull())
            taken.push_back(places[i]);
    }
    return places;
}

void CursorLabels::draw(QPainter *painter, const QwtScaleMap &, const QwtScaleMap &,
                        const QRectF &canvasRect) const
{
    std::vector<const CursorMarker *> seen;
    std::vector<QPointF> anchors;
    std::vector<QSizeF> sizes;
    for (const CursorMarker *marker : m_markers) {
        if (!marker->isVisible() || marker->label().isEmpty() ||
            !canvasRect.adjusted(-1, -1, 1, 1).contains(marker->anchor()))
            continue;
        seen.push_back(marker);
        anchors.push_back(marker->anchor());
        sizes.push_back(marker->label().textSize(painter->font()) + QSizeF(2 * padding, padding));
    }
    std::vector<QRectF> obstacles;
    for (const CursorLine *line : m_lines)
        if (!line->labelRect().isNull())
            obstacles.push_back(line->labelRect());
    // On the screen tool bars and handles lie over the canvas; on paper there are none.
    const QWidget *canvas = plot()->canvas();
    if (canvasRect.toRect() == canvas->contentsRect())
        for (const QObject *child : canvas->children())
            if (const auto *widget = qobject_cast<const QWidget *>(child);
                widget && widget->isVisible())
                obstacles.push_back(widget->geometry());
    const auto places = arrange(anchors, sizes, obstacles, canvasRect.adjusted(1, 1, -1, -1));
    for (std::size_t i = 0; i < seen.size(); ++i)
        if (!places[i].isNull())
            drawLabel(*painter, *seen[i], places[i]);
}

void CursorLabels::drawLabel(QPainter &painter, const CursorMarker &marker, const QRectF &rect)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF anchor = marker.anchor();
    const QPointF corner(anchor.x() < rect.left() ? rect.left() : rect.right(), rect.center().y());
    painter.setPen(QPen(marker.frame(), 1));
    painter.drawLine(anchor, corner);
    painter.setBrush(QColor(255, 255, 255, 235));
    painter.setPen(QPen(marker.frame(), 1.5));
    painter.drawRoundedRect(rect, 2, 2);
    painter.setPen(QColor(0x20, 0x26, 0x2c));
    marker.label().draw(&painter, rect.adjusted(padding, 0, -padding, 0));
    painter.restore();
}

} // namespace Widgets
