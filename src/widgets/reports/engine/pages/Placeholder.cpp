#include "widgets/reports/engine/pages/Placeholder.h"

#include "widgets/reports/engine/template/TemplateItem.h"
#include "widgets/reports/engine/text/TextBlock.h"
#include "widgets/reports/engine/text/TextStyle.h"

#include <QPainter>
#include <QPen>

namespace LimeReport {

namespace {

const QColor Mark(0xa0, 0x1c, 0x1c);
constexpr double Units = 10; // of texts, a millimetre

TextStyle noteStyle()
{
    TemplateItem item;
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(8);
    item.properties = {{QStringLiteral("font"), font},
                       {QStringLiteral("fontColor"), Mark},
                       {QStringLiteral("margin"), 8},
                       {QStringLiteral("alignment"), int(Qt::AlignLeft | Qt::AlignVCenter)}};
    return TextStyle(item);
}

} // namespace

void drawPlaceholder(QPainter &painter, const QRectF &rect, double unit, const QString &text)
{
    painter.save();
    painter.translate(rect.topLeft());
    painter.scale(unit / Units, unit / Units);
    const QRectF box(0, 0, rect.width() * Units / unit, rect.height() * Units / unit);
    painter.fillRect(box, QColor(0xfb, 0xf0, 0xf0));
    QPen pen(Mark, 3);
    pen.setStyle(Qt::DashLine);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(box.adjusted(1.5, 1.5, -1.5, -1.5));
    const TextStyle style = noteStyle();
    TextBlock(style, text, box.size()).paint(painter, box);
    painter.restore();
}

} // namespace LimeReport
