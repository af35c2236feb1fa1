#include "widgets/elements/painting/BargraphPainter.h"

#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/painting/TabularText.h"
#include "widgets/elements/painting/ZoneSigns.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>

namespace Widgets {

namespace {

using Zones = Nodes::LimitZones;

constexpr double minorTick = 4;     // pixels
constexpr double smallestSign = 11; // across; a mark on less could not be told
const QColor troughColor(211, 216, 220);
const QColor lineColor(86, 94, 102);
const QColor setPointColor(16, 84, 150);

} // namespace

BargraphPainter::BargraphPainter(QPainter &painter, const BargraphLook &look)
    : m_painter(painter), m_look(look), m_layout(look)
{
}

double BargraphPainter::along(double value) const
{
    const double share =
        qBound(0.0, (value - m_look.minimum) / (m_look.maximum - m_look.minimum), 1.0);
    return m_look.isVertical ? m_layout.axis().bottom() - share * m_layout.axis().height()
                             : m_layout.axis().left() + share * m_layout.axis().width();
}

QPointF BargraphPainter::point(double position, double depth) const
{
    return m_look.isVertical ? QPointF(m_layout.axis().left() + depth, position)
                             : QPointF(position, m_layout.axis().bottom() - depth);
}

QRectF BargraphPainter::area(double from, double to, double depth, double thickness) const
{
    return QRectF(point(from, depth), point(to, depth + thickness)).normalized();
}

QRectF BargraphPainter::trough() const
{
    return m_look.isVertical
               ? area(m_layout.axis().bottom(), m_layout.axis().top(), m_layout.barDepth(),
                      m_layout.markDepth() - m_layout.barDepth())
               : area(m_layout.axis().left(), m_layout.axis().right(), m_layout.barDepth(),
                      m_layout.markDepth() - m_layout.barDepth());
}

void BargraphPainter::draw()
{
    if (m_look.box.isEmpty())
        return;
    m_painter.setFont(m_look.font);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.fillRect(trough(), troughColor);
    if (m_look.hasRange() && m_layout.hasTicks())
        drawScale();
    if (m_look.hasRange() && m_layout.hasZones())
        drawZones();
    if (m_look.hasBar())
        drawBar();
    else if (m_look.isStandIn)
        drawOutline();
    m_painter.setPen(QPen(lineColor, 1));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(trough());
    const bool isThin = m_layout.markDepth() - m_layout.barDepth() < smallestSign;
    ElementPainting::drawQualityMark(m_painter, isThin ? m_look.box : trough().toRect(),
                                     m_look.quality, Qt::AlignLeft);
    if (m_look.hasBar())
        drawPointer();
    if (m_look.hasRange() && m_look.setPoint)
        drawSetPoint();
    if (m_layout.hasText())
        drawText();
    drawBadge();
}

void BargraphPainter::drawScale()
{
    m_painter.setPen(QPen(lineColor, 1));
    for (const double tick : m_layout.ticks().minor)
        m_painter.drawLine(point(along(tick), m_layout.zoneDepth() - minorTick),
                           point(along(tick), m_layout.zoneDepth()));
    for (const double tick : m_layout.ticks().major)
        m_painter.drawLine(point(along(tick), m_layout.tickDepth()),
                           point(along(tick), m_layout.zoneDepth()));
    if (!m_layout.hasNumbers())
        return;
    m_painter.setPen(m_look.textColor);
    for (const double tick : m_layout.ticks().major)
        drawNumber(tick);
}

void BargraphPainter::drawNumber(double value)
{
    const QString text = QString::number(value, 'f', m_layout.ticks().decimals);
    const QPointF at = point(along(value), m_layout.tickDepth() - BargraphLayout::Gap);
    QRectF place(0, 0, TabularText::width(m_look.font, text), QFontMetricsF(m_look.font).height());
    if (m_look.isVertical)
        place.moveTopLeft(at - QPointF(place.width(), place.height() / 2));
    else
        place.moveTopLeft(at - QPointF(place.width() / 2, 0));
    TabularText::draw(m_painter, place, Qt::AlignLeft, text);
}

void BargraphPainter::drawZone(double from, double to, Zones::enZone zone)
{
    from = qMax(from, m_look.minimum);
    to = qMin(to, m_look.maximum);
    if (!(from < to))
        return;
    const bool isActive = m_look.mark.isActive() && m_look.mark.zone == zone;
    const QRectF place =
        area(along(from), along(to), m_layout.zoneDepth() + 1, m_layout.zoneWidth() - 1);
    m_painter.fillRect(place, ZoneSigns::ground(zone, isActive));
    m_painter.fillRect(place, ZoneSigns::pattern(zone, isActive));
    m_painter.setPen(QPen(lineColor, 1));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(place);
}

void BargraphPainter::drawZones()
{
    const Zones &zones = m_look.zones;
    drawZone(m_look.minimum, zones.lowLow, Zones::ZoneLowLow);
    drawZone(qMax(m_look.minimum, zones.lowLow), zones.low, Zones::ZoneLow);
    drawZone(zones.high, qMin(m_look.maximum, zones.highHigh), Zones::ZoneHigh);
    drawZone(zones.highHigh, m_look.maximum, Zones::ZoneHighHigh);
}

// From zero where the scale holds it, so that both signs show their amount.
void BargraphPainter::drawBar()
{
    const double base = qBound(m_look.minimum, 0.0, m_look.maximum);
    const QRectF bar = area(along(base), along(m_look.value), m_layout.barDepth(),
                            m_layout.markDepth() - m_layout.barDepth());
    const QColor color = ZoneSigns::color(m_look.mark, m_look.barColor);
    const bool isLive = m_look.quality != Nodes::Quality::Stale;
    m_painter.fillRect(bar, QBrush(color, isLive ? Qt::SolidPattern : Qt::Dense5Pattern));
}

void BargraphPainter::drawOutline()
{
    const QRectF all = trough();
    const QRectF half = m_look.isVertical ? all.adjusted(2, all.height() / 2, -2, -2)
                                          : all.adjusted(2, 2, -all.width() / 2, -2);
    m_painter.setPen(QPen(lineColor, 1, Qt::DashLine));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(half);
}

void BargraphPainter::drawPointer()
{
    const int direction = BargraphLook::overflow(m_look.value, m_look.minimum, m_look.maximum);
    if (direction != 0) {
        drawOverflow(direction, true);
        return;
    }
    const double at = along(m_look.value);
    const double bar = m_layout.markDepth();
    if (m_layout.hasMarks()) {
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(m_look.textColor);
        m_painter.drawPolygon(QPolygonF() << point(at, bar) << point(at - 5, bar + 9)
                                          << point(at + 5, bar + 9));
    }
    m_painter.setPen(QPen(m_look.textColor, 1.5));
    m_painter.drawLine(point(at, m_layout.barDepth()), point(at, bar));
}

// The value goes on beyond the end of the scale.
void BargraphPainter::drawOverflow(int direction, bool isFilled)
{
    const double outward = direction * (m_look.isVertical ? -1 : 1);
    const double length = BargraphLayout::ArrowLength;
    const double end = along(direction > 0 ? m_look.maximum : m_look.minimum) +
                       outward * (m_layout.hasEnds() ? 0 : -length);
    const double from = m_layout.barDepth();
    const double to = m_layout.markDepth();
    const bool isOnBar = isFilled || !m_layout.hasMarks();
    const double middle = isOnBar ? (from + to) / 2 : to + BargraphLayout::MarkWidth / 2;
    const double half = isOnBar ? qMin(isFilled ? 12.0 : 5.0, (to - from) / 2) : 5;
    m_painter.setPen(QPen(isFilled ? m_look.textColor : setPointColor, 1.5));
    m_painter.setBrush(isFilled ? QBrush(m_look.textColor) : QBrush(Qt::NoBrush));
    m_painter.drawPolygon(QPolygonF() << point(end + outward * 2, middle - half)
                                      << point(end + outward * 2, middle + half)
                                      << point(end + outward * (length - 1), middle));
}

void BargraphPainter::drawSetPoint()
{
    const double number = *m_look.setPoint;
    const int direction = BargraphLook::overflow(number, m_look.minimum, m_look.maximum);
    if (direction != 0) {
        drawOverflow(direction, false);
        return;
    }
    const double at = along(number);
    const double from = m_layout.barDepth();
    const double to = m_layout.markDepth();
    const double half = m_layout.hasMarks() ? 5.5 : qMin(5.5, (to - from) / 2);
    const double middle = m_layout.hasMarks() ? to + half : (from + to) / 2;
    const Qt::PenStyle style = m_look.isSetPointGood ? Qt::SolidLine : Qt::DotLine;
    m_painter.setPen(QPen(setPointColor, 2, style));
    m_painter.setBrush(m_layout.hasMarks() ? QBrush(Qt::NoBrush) : QBrush(Qt::white));
    m_painter.drawLine(point(at, from), point(at, to));
    m_painter.drawPolygon(QPolygonF() << point(at, middle - half) << point(at - half, middle)
                                      << point(at, middle + half) << point(at + half, middle));
}

// Across the whole box where the bar itself is thin.
QRectF BargraphPainter::badgeOnBar(double height) const
{
    const QRectF bar = trough();
    const double across = m_look.isVertical ? bar.height() - 2 : m_look.box.height();
    QSizeF size(height * ZoneSigns::BadgeAspect, height);
    size.scale(qMin(size.width(), bar.width() - 2), qMin(size.height(), across),
               Qt::KeepAspectRatio);
    QRectF badge(QPointF(), size);
    badge.moveCenter(bar.center());
    if (m_look.isVertical)
        badge.moveBottom(bar.bottom() - BargraphLayout::Gap);
    else
        badge.moveTop(qBound(double(m_look.box.top()), badge.top(),
                             m_look.box.top() + m_look.box.height() - badge.height()));
    return badge;
}

// Where the number leaves no room beside it, the badge stands on the bar.
void BargraphPainter::drawBadge()
{
    const QRectF &row = m_layout.textRow();
    const double height = row.height() - 4;
    QRectF badge(row.left(), row.top() + 2, height * ZoneSigns::BadgeAspect, height);
    const double beside = (row.width() - TabularText::width(m_look.font, m_look.text)) / 2;
    if (!m_layout.hasText() || beside < badge.width() + BargraphLayout::Gap)
        badge = badgeOnBar(height);
    ZoneSigns::drawBadge(m_painter, badge, m_look.mark);
}

void BargraphPainter::drawText()
{
    QFont font = m_look.font;
    font.setItalic(font.italic() || m_look.quality == Nodes::Quality::Stale);
    const double width = TabularText::width(font, m_look.text);
    if (width > m_layout.textRow().width()) // a number that is cut is another number
        font.setPixelSize(
            qMax(1, int(QFontInfo(font).pixelSize() * m_layout.textRow().width() / width)));
    m_painter.setFont(font);
    m_painter.setPen(m_look.textColor);
    TabularText::draw(m_painter, m_layout.textRow(), Qt::AlignHCenter, m_look.text);
}

} // namespace Widgets
