#include "widgets/events/AlarmSigns.h"

#include "widgets/elements/painting/AlarmShapes.h"

#include <QPainter>
#include <QPixmapCache>

namespace Widgets {

namespace {

using Nodes::AlarmState;

const QColor dark(0x26, 0x2c, 0x31);
const QColor light(0xf0, 0xf2, 0xf4);

bool isWaiting(AlarmState state)
{
    return state == AlarmState::ActiveUnacked || state == AlarmState::ReturnedUnacked;
}

bool isPresent(AlarmState state)
{
    return state == AlarmState::ActiveUnacked || state == AlarmState::ActiveAcked;
}

// A dark badge stands on the filled rows, a hollow one on the others.
QPixmap paintBadge(AlarmState state, int priority, int height)
{
    QPixmap badge(height, height);
    badge.fill(Qt::transparent);
    QPainter painter(&badge);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isFilled = isWaiting(state);
    // Red lines on the dark ground would hardly be seen.
    const QColor lines = priority == 1 ? QColor(255, 128, 120) : AlarmShapes::color(priority);
    const QColor ink = isPresent(state) ? lines : QColor(Qt::gray);
    painter.setPen(QPen(isFilled && isPresent(state) ? light : ink, 2));
    painter.setBrush(!isFilled ? QBrush(Qt::NoBrush) : QBrush(isPresent(state) ? dark : ink));
    const QRectF area(2, 2, height - 4, height - 4);
    AlarmShapes::draw(painter, priority, area);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(qMax(1, height / 2));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(!isFilled ? ink : isPresent(state) ? light : dark);
    painter.drawText(area.translated(0, priority == 2 ? height / 8.0 : 0), Qt::AlignCenter,
                     QString::number(priority));
    return badge;
}

} // namespace

QColor AlarmSigns::listGround()
{
    return dark;
}

AlarmSigns AlarmSigns::of(AlarmState state, int priority)
{
    if (state != AlarmState::ActiveUnacked)
        return {dark, light};
    return {AlarmShapes::color(priority), AlarmShapes::ink(priority)};
}

QPixmap AlarmSigns::badge(AlarmState state, int priority, int height)
{
    if (priority <= 0 || height < 8)
        return {};
    const QString key =
        QStringLiteral("alarm badge %1 %2 %3").arg(int(state)).arg(priority).arg(height);
    QPixmap badge;
    if (QPixmapCache::find(key, &badge))
        return badge;
    badge = paintBadge(state, priority, height);
    QPixmapCache::insert(key, badge);
    return badge;
}

} // namespace Widgets
