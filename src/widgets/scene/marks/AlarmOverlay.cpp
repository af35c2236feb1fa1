#include "widgets/scene/marks/AlarmOverlay.h"

#include "widgets/elements/alarms/BlinkClock.h"
#include "widgets/elements/painting/AlarmShapes.h"
#include "widgets/scene/ProxyWidget.h"

#include <QPainter>

namespace Widgets {

using Nodes::AlarmState;

namespace {

// Dark lines part every colour from every ground.
const QColor dark(0x1c, 0x20, 0x24);
const QColor light(0xf4, 0xf6, 0xf7);
const QColor grey(0x6d, 0x76, 0x7e);

constexpr qreal frameWidth = 3;      // of the colour, with 1 of dark on either side
constexpr qreal frameDistance = 2.5; // of its middle: it begins at the element's edge
constexpr qreal badgeSize = 22;      // its number stands 13 high
constexpr qreal badgeOverlap = 10;   // with the corner of the element
constexpr qreal hiddenSize = 14;
constexpr qreal margin = badgeSize - badgeOverlap + 2;

QPen line(const QColor &color, qreal width, Qt::PenStyle style = Qt::SolidLine)
{
    return {color, width, style, Qt::FlatCap, Qt::MiterJoin};
}

} // namespace

AlarmOverlay::AlarmOverlay(ProxyWidget &element, const AlarmSummary &summary)
    : ElementOverlay(element, AlarmLevel, margin)
{
    setSummary(summary);
}

void AlarmOverlay::setSummary(const AlarmSummary &summary)
{
    if (m_summary == summary)
        return;
    follow(summary.blinks());
    m_summary = summary;
    update();
}

void AlarmOverlay::follow(bool blinks)
{
    BlinkClock &clock = BlinkClock::instance();
    if (blinks)
        connect(&clock, &BlinkClock::beat, this, &AlarmOverlay::repaint, Qt::UniqueConnection);
    else
        disconnect(&clock, &BlinkClock::beat, this, &AlarmOverlay::repaint);
}

void AlarmOverlay::repaint()
{
    update();
}

void AlarmOverlay::paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/,
                         QWidget * /*widget*/)
{
    const bool isLit = m_summary.blinks() && BlinkClock::instance().isLit();
    painter->setRenderHint(QPainter::Antialiasing);
    if (m_summary.isHidden())
        return drawHiddenSign(*painter);
    drawFrame(*painter, isLit);
    drawBadge(*painter, isLit);
}

void AlarmOverlay::drawFrame(QPainter &painter, bool isLit) const
{
    const QRectF frame =
        place().adjusted(-frameDistance, -frameDistance, frameDistance, frameDistance);
    painter.setBrush(Qt::NoBrush);
    if (m_summary.state == AlarmState::ReturnedUnacked) {
        painter.setPen(line(light, 2));
        painter.drawRect(frame);
        painter.setPen(line(dark, 2, Qt::DashLine));
        painter.drawRect(frame);
        return;
    }
    const bool isColored = isLit || m_summary.state == AlarmState::ActiveAcked;
    painter.setPen(line(dark, frameWidth + 2));
    painter.drawRect(frame);
    painter.setPen(line(isColored ? AlarmShapes::color(m_summary.priority) : light, frameWidth));
    painter.drawRect(frame);
}

// Left and above of the corner: values stand in the middle or at the right.
void AlarmOverlay::drawBadge(QPainter &painter, bool isLit) const
{
    const QPointF corner = place().topLeft() - QPointF(1, 1) * (badgeSize - badgeOverlap);
    const QRectF badge = inScene({corner, QSizeF(badgeSize, badgeSize)}).adjusted(1, 1, -1, -1);
    const bool isGone = m_summary.state == AlarmState::ReturnedUnacked;
    painter.setBrush(isLit ? AlarmShapes::color(m_summary.priority) : light);
    painter.setPen(line(dark, isGone ? 1.5 : 2, isGone ? Qt::DashLine : Qt::SolidLine));
    AlarmShapes::drawNumbered(painter, m_summary.priority, badge,
                              isLit ? AlarmShapes::ink(m_summary.priority) : dark);
}

void AlarmOverlay::drawHiddenSign(QPainter &painter) const
{
    const QPointF corner = place().topLeft() - QPointF(1, 1) * (hiddenSize / 2);
    const QRectF sign = inScene({corner, QSizeF(hiddenSize, hiddenSize)}).adjusted(1, 1, -1, -1);
    painter.setBrush(light);
    painter.setPen(line(grey, 2));
    painter.drawEllipse(sign);
    const QPointF reach = QPointF(1, -1) * (sign.width() / 2 * 0.7);
    painter.drawLine(sign.center() - reach, sign.center() + reach);
}

} // namespace Widgets
