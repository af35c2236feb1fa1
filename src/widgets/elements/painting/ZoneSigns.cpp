#include "widgets/elements/painting/ZoneSigns.h"

#include <QPainter>
#include <QPolygonF>

namespace Widgets {

namespace {

const QColor alarmColor(198, 40, 40);
const QColor warningColor(240, 180, 0);
const QColor mutedAlarm(214, 186, 186);
const QColor mutedWarning(219, 212, 190);
const QColor outline(32, 36, 40);
const QColor hiddenGround(206, 210, 214);

QPolygonF badgeShape(const QRectF &r, bool isAlarm)
{
    if (isAlarm)
        return QPolygonF(r);
    const double tip = r.height() / 2;
    return {{QPointF(r.left(), r.center().y()), QPointF(r.left() + tip, r.top()),
             QPointF(r.right() - tip, r.top()), QPointF(r.right(), r.center().y()),
             QPointF(r.right() - tip, r.bottom()), QPointF(r.left() + tip, r.bottom())}};
}

QPen framePen(const Nodes::AlarmMark &mark, const QColor &own)
{
    QPen pen(outline, 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    if (mark.state == Nodes::AlarmState::ActiveAcked)
        pen = QPen(own, 3, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    else if (mark.state == Nodes::AlarmState::ReturnedUnacked)
        pen = QPen(outline, 2, Qt::DashLine, Qt::FlatCap, Qt::MiterJoin);
    return pen;
}

} // namespace

QColor ZoneSigns::color(Zone zone, const QColor &normal)
{
    if (zone == Nodes::LimitZones::ZoneNormal)
        return normal;
    return Nodes::LimitZones::isAlarm(zone) ? alarmColor : warningColor;
}

QColor ZoneSigns::color(const Nodes::AlarmMark &mark, const QColor &normal)
{
    if (!mark.isActive())
        return normal;
    return mark.isAlarm ? alarmColor : warningColor;
}

QColor ZoneSigns::ground(Zone zone, bool isActive)
{
    if (isActive)
        return color(zone, Qt::transparent);
    return Nodes::LimitZones::isAlarm(zone) ? mutedAlarm : mutedWarning;
}

QBrush ZoneSigns::pattern(Zone zone, bool isActive)
{
    const bool isAlarm = Nodes::LimitZones::isAlarm(zone);
    const QColor lines = isActive && isAlarm ? Qt::white : QColor(32, 36, 40, isActive ? 255 : 130);
    return QBrush(lines, isAlarm ? Qt::DiagCrossPattern : Qt::BDiagPattern);
}

void ZoneSigns::drawBadge(QPainter &painter, const QRectF &rect, const Nodes::AlarmMark &mark)
{
    if (mark.state == Nodes::AlarmState::Normal || rect.isEmpty())
        return;
    const bool isUnacked = mark.state == Nodes::AlarmState::ActiveUnacked;
    const QColor own = mark.isAlarm ? alarmColor : warningColor;
    const QRectF outer = rect.adjusted(1, 1, -1, -1);
    const double inset = isUnacked ? qMax(2.0, rect.height() * 0.12) : 0;
    const QRectF inner = outer.adjusted(inset, inset, -inset, -inset);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (isUnacked) {
        painter.setPen(QPen(outline, 2));
        painter.setBrush(Qt::white);
        painter.drawPolygon(badgeShape(outer, mark.isAlarm));
    }
    painter.setPen(framePen(mark, own));
    painter.setBrush(isUnacked ? own : mark.isHidden() ? hiddenGround : QColor(Qt::white));
    painter.drawPolygon(badgeShape(inner, mark.isAlarm));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(1, int(inner.height() * 0.68)));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(isUnacked && mark.isAlarm ? QColor(Qt::white) : outline);
    painter.drawText(inner, Qt::AlignCenter, QString::fromStdString(mark.token));
    if (mark.isHidden())
        painter.drawLine(inner.bottomLeft(), inner.topRight());
    painter.restore();
}

} // namespace Widgets
