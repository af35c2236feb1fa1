#include "widgets/elements/health/HealthChart.h"

#include "widgets/dialogs/DialogLook.h"

#include <QPainter>

namespace Widgets {

const QColor HealthChart::ground(0xfa, 0xfb, 0xfc);
const QColor HealthChart::frame(0x8a, 0x94, 0x9b);
const QColor HealthChart::ink(0x20, 0x26, 0x2c);
const QColor HealthChart::grid(0xd5, 0xd9, 0xdc);
const QColor HealthChart::normalBar(0x6b, 0x75, 0x7d);
const QColor HealthChart::abnormalBar(198, 40, 40);

HealthChart::HealthChart(QWidget *parent) : QWidget(parent)
{
    MakeLegible(*this);
}

void HealthChart::drawGround(QPainter &painter) const
{
    painter.setPen(frame);
    painter.setBrush(ground);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void HealthChart::drawNothing(QPainter &painter, const QString &why) const
{
    painter.setPen(ink);
    painter.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, why);
}

void HealthChart::drawText(QPainter &painter, const QRect &place, int flags, const QString &text)
{
    painter.drawText(place, flags,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}

} // namespace Widgets
