#include "widgets/elements/painting/TabularText.h"

#include <QFontMetricsF>
#include <QPainter>

namespace Widgets {

namespace {

double digitWidth(const QFontMetricsF &metrics)
{
    double width = 0;
    for (char digit = '0'; digit <= '9'; ++digit)
        width = qMax(width, metrics.horizontalAdvance(QLatin1Char(digit)));
    return width;
}

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

} // namespace

double TabularText::width(const QFont &font, const QString &text)
{
    const QFontMetricsF metrics(font);
    const double digit = digitWidth(metrics);
    double width = 0;
    for (const QChar character : text)
        width += isDigit(character) ? digit : metrics.horizontalAdvance(character);
    return width;
}

void TabularText::draw(QPainter &painter, const QRectF &rect, Qt::Alignment alignment,
                       const QString &text)
{
    const QFontMetricsF metrics(painter.font());
    const double digit = digitWidth(metrics);
    const double free = rect.width() - width(painter.font(), text);
    double x = rect.left();
    if (alignment & Qt::AlignRight)
        x += free;
    else if (alignment & Qt::AlignHCenter)
        x += free / 2;
    const double y = rect.top() + (rect.height() - metrics.height()) / 2 + metrics.ascent();
    for (const QChar character : text) {
        const double own = metrics.horizontalAdvance(character);
        const double cell = isDigit(character) ? digit : own;
        painter.drawText(QPointF(x + (cell - own) / 2, y), QString(character));
        x += cell;
    }
}

} // namespace Widgets
