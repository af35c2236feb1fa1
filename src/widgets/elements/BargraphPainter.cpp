#include "widgets/elements/BargraphPainter.h"

#include "widgets/elements/ElementPainting.h"
#include "widgets/elements/TabularText.h"
#include "widgets/elements/ZoneSigns.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>

#include <cmath>

namespace Widgets {

namespace {

using Zones = Nodes::LimitZones;

constexpr double arrowLength = 11; // pixels, all of these
constexpr double majorTick = 7;
constexpr double minorTick = 4;
constexpr double zoneWidth = 7;
constexpr double markWidth = 12;
constexpr double thinnestBar = 12; // below it the marks overlap the bar
constexpr double gap = 3;
constexpr double smallestDivision = 44; // between numbers

const QColor troughColor(211, 216, 220);
const QColor lineColor(86, 94, 102);
const QColor setPointColor(16, 84, 150);

} // namespace

bool BargraphLook::hasBar() const
{
    return quality != Nodes::Quality::Bad && !std::isnan(value) && minimum < maximum;
}

BargraphPainter::BargraphPainter(QPainter &painter, const BargraphLook &look)
    : m_painter(painter), m_look(look)
{
    layOut();
}

void BargraphPainter::layOut()
{
    const QFontMetricsF metrics(m_look.font);
    m_axis = m_look.box;
    m_textRow = QRectF(m_axis.left(), m_axis.top(), m_axis.width(), metrics.height() + 2 * gap);
    if (m_look.isVertical)
        m_textRow.moveBottom(m_axis.bottom());
    if (!m_look.text.isEmpty())
        m_axis.adjust(0, m_look.isVertical ? 0 : m_textRow.height(), 0,
                      m_look.isVertical ? -m_textRow.height() : 0);
    const double length = m_look.isVertical ? m_axis.height() : m_axis.width();
    m_ticks = ScaleTicks::make(m_look.minimum, m_look.maximum, int(length / smallestDivision));
    double numberWidth = 0;
    for (const double tick : qAsConst(m_ticks.major))
        numberWidth =
            qMax(numberWidth,
                 TabularText::width(m_look.font, QString::number(tick, 'f', m_ticks.decimals)));
    double end = arrowLength + 2;
    if (m_look.hasScale) {
        end = qMax(end, (m_look.isVertical ? metrics.height() : numberWidth) / 2);
        m_tickDepth = (m_look.isVertical ? numberWidth : metrics.height()) + gap;
        m_zoneDepth = m_tickDepth + majorTick;
    }
    m_axis.adjust(m_look.isVertical ? 0 : end, m_look.isVertical ? end : 0,
                  m_look.isVertical ? 0 : -end, m_look.isVertical ? -end : 0);
    m_barDepth = m_zoneDepth + zoneWidth + gap;
    const double depth = m_look.isVertical ? m_axis.width() : m_axis.height();
    m_markDepth = qMax(depth - markWidth, qMin(m_barDepth + thinnestBar, depth));
}

double BargraphPainter::along(double value) const
{
    const double share =
        qBound(0.0, (value - m_look.minimum) / (m_look.maximum - m_look.minimum), 1.0);
    return m_look.isVertical ? m_axis.bottom() - share * m_axis.height()
                             : m_axis.left() + share * m_axis.width();
}

QPointF BargraphPainter::point(double position, double depth) const
{
    return m_look.isVertical ? QPointF(m_axis.left() + depth, position)
                             : QPointF(position, m_axis.bottom() - depth);
}

QRectF BargraphPainter::area(double from, double to, double depth, double thickness) const
{
    return QRectF(point(from, depth), point(to, depth + thickness)).normalized();
}

QRectF BargraphPainter::trough() const
{
    return m_look.isVertical
               ? area(m_axis.bottom(), m_axis.top(), m_barDepth, m_markDepth - m_barDepth)
               : area(m_axis.left(), m_axis.right(), m_barDepth, m_markDepth - m_barDepth);
}

void BargraphPainter::draw()
{
    m_painter.setFont(m_look.font);
    m_painter.setRenderHint(QPainter::Antialiasing);
    m_painter.fillRect(trough(), troughColor);
    const bool hasRange = m_look.minimum < m_look.maximum;
    if (hasRange && m_look.hasScale)
        drawScale();
    if (hasRange)
        drawZones();
    if (m_look.hasBar())
        drawBar();
    m_painter.setPen(QPen(lineColor, 1));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(trough());
    ElementPainting::drawQualityMark(m_painter, trough().toRect(), m_look.quality, Qt::AlignLeft);
    if (m_look.hasBar())
        drawPointer();
    if (hasRange && m_look.setPoint)
        drawSetPoint();
    if (!m_look.text.isEmpty())
        drawText();
    drawBadge(m_look.text.isEmpty() ? m_textRow.width()
                                    : TabularText::width(m_look.font, m_look.text));
}

void BargraphPainter::drawScale()
{
    m_painter.setPen(QPen(lineColor, 1));
    for (const double tick : qAsConst(m_ticks.minor))
        m_painter.drawLine(point(along(tick), m_zoneDepth - minorTick),
                           point(along(tick), m_zoneDepth));
    for (const double tick : qAsConst(m_ticks.major))
        m_painter.drawLine(point(along(tick), m_tickDepth), point(along(tick), m_zoneDepth));
    m_painter.setPen(m_look.textColor);
    for (const double tick : qAsConst(m_ticks.major))
        drawNumber(tick);
}

void BargraphPainter::drawNumber(double value)
{
    const QString text = QString::number(value, 'f', m_ticks.decimals);
    const QPointF at = point(along(value), m_tickDepth - gap);
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
    const QRectF place = area(along(from), along(to), m_zoneDepth + 1, zoneWidth - 1);
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
    const QRectF bar = area(along(base), along(m_look.value), m_barDepth, m_markDepth - m_barDepth);
    const QColor color = ZoneSigns::color(m_look.mark, m_look.barColor);
    const bool isLive = m_look.quality != Nodes::Quality::Stale;
    m_painter.fillRect(bar, QBrush(color, isLive ? Qt::SolidPattern : Qt::Dense5Pattern));
}

void BargraphPainter::drawPointer()
{
    const int direction = BargraphLook::overflow(m_look.value, m_look.minimum, m_look.maximum);
    if (direction != 0) {
        drawOverflow(direction, true);
        return;
    }
    const double at = along(m_look.value);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(m_look.textColor);
    m_painter.drawPolygon(QPolygonF() << point(at, m_markDepth) << point(at - 5, m_markDepth + 9)
                                      << point(at + 5, m_markDepth + 9));
    m_painter.setPen(QPen(m_look.textColor, 1.5));
    m_painter.drawLine(point(at, m_barDepth), point(at, m_markDepth));
}

// The value goes on beyond the end of the scale.
void BargraphPainter::drawOverflow(int direction, bool isFilled)
{
    const double end = along(direction > 0 ? m_look.maximum : m_look.minimum);
    const double outward = direction * (m_look.isVertical ? -1 : 1);
    const double middle = isFilled ? (m_barDepth + m_markDepth) / 2 : m_markDepth + markWidth / 2;
    const double half = isFilled ? qMin(12.0, qMax(5.0, (m_markDepth - m_barDepth) / 2)) : 5;
    m_painter.setPen(QPen(isFilled ? m_look.textColor : setPointColor, 1.5));
    m_painter.setBrush(isFilled ? QBrush(m_look.textColor) : QBrush(Qt::NoBrush));
    m_painter.drawPolygon(QPolygonF() << point(end + outward * 2, middle - half)
                                      << point(end + outward * 2, middle + half)
                                      << point(end + outward * arrowLength, middle));
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
    const Qt::PenStyle style = m_look.isSetPointGood ? Qt::SolidLine : Qt::DotLine;
    m_painter.setPen(QPen(setPointColor, 2, style));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawLine(point(at, m_barDepth), point(at, m_markDepth));
    m_painter.drawPolygon(QPolygonF()
                          << point(at, m_markDepth) << point(at - 5, m_markDepth + 5.5)
                          << point(at, m_markDepth + 11) << point(at + 5, m_markDepth + 5.5));
}

// Where the number leaves no room beside it, the badge stands on the bar's foot.
void BargraphPainter::drawBadge(double textWidth)
{
    QRectF badge(m_textRow.left(), m_textRow.top() + 2, 0, m_textRow.height() - 4);
    badge.setWidth(badge.height() * ZoneSigns::BadgeAspect);
    if ((m_textRow.width() - textWidth) / 2 < badge.width() + gap) {
        const QRectF bar = trough();
        badge.setWidth(qMin(badge.width(), bar.width() - 2));
        badge.setHeight(qMin(badge.width() / ZoneSigns::BadgeAspect, bar.height() - 2));
        badge.moveCenter(bar.center());
        if (m_look.isVertical)
            badge.moveBottom(bar.bottom() - gap);
    }
    ZoneSigns::drawBadge(m_painter, badge, m_look.mark);
}

void BargraphPainter::drawText()
{
    QFont font = m_look.font;
    font.setItalic(font.italic() || m_look.quality == Nodes::Quality::Stale);
    const double width = TabularText::width(font, m_look.text);
    if (width > m_textRow.width()) // a number that is cut is another number
        font.setPixelSize(qMax(1, int(QFontInfo(font).pixelSize() * m_textRow.width() / width)));
    m_painter.setFont(font);
    m_painter.setPen(m_look.textColor);
    TabularText::draw(m_painter, m_textRow, Qt::AlignHCenter, m_look.text);
}

} // namespace Widgets
