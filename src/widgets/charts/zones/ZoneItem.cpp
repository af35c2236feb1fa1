#include "widgets/charts/zones/ZoneItem.h"

#include "widgets/charts/painting/BarFreePlace.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>
#include <QWidget>

#include <cmath>

#include <qwt_plot.h>

namespace Widgets {

namespace {

constexpr int hatchAlpha = 90;
constexpr int lineAlpha = 220;

QColor withAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

} // namespace

ZoneItem::ZoneItem()
{
    setZ(0.5);
    setOrientation(Qt::Horizontal);
}

void ZoneItem::setLook(const QColor &color, const QString &text)
{
    m_color = color;
    m_text = text;
}

void ZoneItem::setLimits(std::optional<QwtInterval> limits)
{
    m_limits = limits;
}

// Zones do not stretch scales that fit themselves to the curves.
QRectF ZoneItem::boundingRect() const
{
    return {0, 0, -1, -1};
}

void ZoneItem::draw(QPainter *painter, const QwtScaleMap &, const QwtScaleMap &yMap,
                    const QRectF &canvasRect) const
{
    if (!m_limits)
        return drawText(*painter, canvasRect,
                        QStringLiteral("%1: предел недостоверен").arg(m_text));
    const QwtScaleMap map = adapted(yAxis(), yMap);
    const auto clipped = [&](double value, double open) {
        return std::isfinite(value)
                   ? qBound(canvasRect.top() - 1, map.transform(value), canvasRect.bottom() + 1)
                   : open;
    };
    const double top = clipped(m_limits->maxValue(), canvasRect.top() - 1);
    const double bottom = clipped(m_limits->minValue(), canvasRect.bottom() + 1);
    painter->save();
    drawBand(*painter, QRectF(canvasRect.left(), top, canvasRect.width(), bottom - top));
    if (m_dragged) {
        painter->setPen(QPen(QColor(0x20, 0x26, 0x2c), 1, Qt::DashLine));
        const double y = map.transform(*m_dragged);
        painter->drawLine(QPointF(canvasRect.left(), y), QPointF(canvasRect.right(), y));
    }
    painter->restore();
    if (bottom - top > plot()->canvas()->fontMetrics().height())
        drawText(*painter, QRectF(canvasRect.left(), top, canvasRect.width(), bottom - top),
                 m_text);
}

void ZoneItem::drawBand(QPainter &painter, const QRectF &band) const
{
    painter.fillRect(band, m_color);
    painter.fillRect(band, QBrush(withAlpha(m_color, hatchAlpha), Qt::BDiagPattern));
    painter.setPen(QPen(withAlpha(m_color.darker(130), lineAlpha), 1));
    painter.drawLine(band.topLeft(), band.topRight());
    painter.drawLine(band.bottomLeft(), band.bottomRight());
}

void ZoneItem::drawText(QPainter &painter, const QRectF &place, const QString &text) const
{
    if (m_text.isEmpty())
        return;
    constexpr int margin = 6;
    painter.save();
    // In pixels of the canvas: a renderer enlarges them for paper, points it would enlarge twice.
    QFont font = plot()->canvas()->font();
    font.setPixelSize(QFontInfo(font).pixelSize());
    painter.setFont(font);
    painter.setPen(withAlpha(m_color.darker(250), 255));
    const QFontMetricsF metrics(font);
    const QSizeF size(metrics.horizontalAdvance(text), metrics.height());
    const QPointF corner(place.left() + margin, place.bottom() - 2 - size.height());
    painter.drawText(BarFreePlace(*plot()->canvas(), QRectF(corner, size)),
                     Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, text);
    painter.restore();
}

} // namespace Widgets
