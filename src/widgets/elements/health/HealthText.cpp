#include "widgets/elements/health/HealthText.h"

#include <QDateTime>
#include <QPainter>
#include <QPolygonF>

namespace Widgets {

namespace {

QString twoParts(qint64 big, const char *bigUnit, qint64 small, const char *smallUnit)
{
    QString text = QStringLiteral("%1 %2").arg(big).arg(QString::fromUtf8(bigUnit));
    if (small > 0)
        text += QStringLiteral(" %1 %2").arg(small).arg(QString::fromUtf8(smallUnit));
    return text;
}

} // namespace

QString HealthText::duration(Nodes::Timestamp microseconds)
{
    const qint64 seconds = (microseconds + 500000) / 1000000;
    if (seconds < 60)
        return QStringLiteral("%1 с").arg(seconds);
    if (seconds < 3600)
        return twoParts(seconds / 60, "мин", seconds % 60, "с");
    if (seconds < 86400)
        return twoParts(seconds / 3600, "ч", seconds % 3600 / 60, "мин");
    return twoParts(seconds / 86400, "сут", seconds % 86400 / 3600, "ч");
}

QString HealthText::time(Nodes::Timestamp at)
{
    return QDateTime::fromMSecsSinceEpoch(at / 1000).toString(QStringLiteral("dd.MM.yyyy HH:mm"));
}

QString HealthText::share(double share, int decimals)
{
    return QString::number(share * 100, 'f', decimals) + QStringLiteral(" %");
}

QString HealthText::value(const Nodes::AlarmMeasure &measure)
{
    if (!measure.isKnown)
        return QStringLiteral("—");
    switch (measure.unit) {
    case Nodes::AlarmMeasure::Share:
        return share(measure.value, measure.decimals);
    case Nodes::AlarmMeasure::Seconds:
        return duration(Nodes::Timestamp(measure.value * 1e6));
    case Nodes::AlarmMeasure::Count:
        break;
    }
    return QString::number(measure.value, 'f', measure.decimals);
}

QString HealthText::verdict(Nodes::HealthVerdict verdict)
{
    switch (verdict) {
    case Nodes::HealthVerdict::Good:
        return QStringLiteral("Норма");
    case Nodes::HealthVerdict::Attention:
        return QStringLiteral("Внимание");
    case Nodes::HealthVerdict::Bad:
        return QStringLiteral("Плохо");
    case Nodes::HealthVerdict::None:
        break;
    }
    return {};
}

QPixmap HealthText::sign(Nodes::HealthVerdict verdict, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place = QRectF(0, 0, size, size).adjusted(1.5, 1.5, -1.5, -1.5);
    painter.setPen(QPen(QColor(0x37, 0x42, 0x4b), 1.5));
    switch (verdict) {
    case Nodes::HealthVerdict::Good: // normal is not coloured
        painter.setBrush(Qt::white);
        painter.drawEllipse(place);
        break;
    case Nodes::HealthVerdict::Attention:
        painter.setBrush(QColor(240, 180, 0));
        painter.drawPolygon(QPolygonF(QVector<QPointF>{
            {place.center().x(), place.top()}, place.bottomRight(), place.bottomLeft()}));
        break;
    case Nodes::HealthVerdict::Bad:
        painter.setBrush(QColor(198, 40, 40));
        painter.drawRect(place);
        break;
    case Nodes::HealthVerdict::None:
        break;
    }
    return pixmap;
}

} // namespace Widgets
