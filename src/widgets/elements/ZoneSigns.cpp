#include "widgets/elements/ZoneSigns.h"

#include <QPainter>
#include <QPolygonF>

namespace Widgets {

namespace {

const QColor alarmColor(198, 40, 40);
const QColor warningColor(240, 180, 0);
const QColor mutedAlarm(214, 186, 186);
const QColor mutedWarning(219, 212, 190);
const QColor outline(32, 36, 40);

QPolygonF badgeShape(const QRectF &r, bool isAlarm)
{
    if (isAlarm)
        return QPolygonF(r);
    const double tip = r.height() / 2;
    return {{QPointF(r.left(), r.center().y()), QPointF(r.left() + tip, r.top()),
             QPointF(r.right() - tip, r.top()), QPointF(r.right(), r.center().y()),
             QPointF(r.right() - tip, r.bottom()), QPointF(r.left() + tip, r.bottom())}};
}

} // namespace

QColor ZoneSigns::color(Zone zone, const QColor &normal)
{
    if (zone == Nodes::LimitZones::ZoneNormal)
        return normal;
    return Nodes::LimitZones::isAlarm(zone) ? alarmColor : warningColor;
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

void ZoneSigns::drawBadge(QPainter &painter, const QRectF &rect, Zone zone)
{
    if (zone == Nodes::LimitZones::ZoneNormal)
        return;
    const bool isAlarm = Nodes::LimitZones::isAlarm(zone);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(outline, isAlarm ? 2 : 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(color(zone, Qt::transparent));
    painter.drawPolygon(badgeShape(rect.adjusted(1, 1, -1, -1), isAlarm));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(1, int(rect.height() * 0.68)));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(isAlarm ? QColor(Qt::white) : outline);
    painter.drawText(rect, Qt::AlignCenter, QLatin1String(Nodes::LimitZones::GetToken(zone)));
    painter.restore();
}

} // namespace Widgets
