#include "widgets/reports/engine/items/BarcodePainter.h"

#include "widgets/reports/engine/expressions/ValueText.h"
#include "widgets/reports/engine/items/BarcodeSymbol.h"
#include "widgets/reports/engine/items/ItemContent.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace LimeReport {

namespace {

constexpr double textMillimetres = 4; // room of the line for people
constexpr int usualType = 20;         // Code 128

QColor colorOf(const QVariantMap &properties, const char *name, const QColor &usual)
{
    const QColor told = properties.value(QLatin1String(name)).value<QColor>();
    return told.isValid() && told.alpha() > 0 ? told : usual;
}

QVariantList heightsOf(const BarcodeSymbol &symbol)
{
    QVariantList heights;
    for (const double height : symbol.rowHeights)
        heights.append(height);
    return heights;
}

// Dark modules as one path, so that no seam shows between neighbours; in units of modules.
QPainterPath modulesOf(const QBitArray &dark, int columns, const QVector<double> &heights)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    double top = 0;
    for (int row = 0; row < heights.size(); ++row) {
        for (int begin = 0; begin < columns;) {
            int end = begin;
            while (end < columns && dark.testBit(row * columns + end))
                ++end;
            if (end > begin)
                path.addRect(begin, top, end - begin, heights[row]);
            begin = end + 1;
        }
        top += heights[row];
    }
    return path;
}

// Puts the box upright and tells its size then.
QSizeF turn(QPainter &painter, const QRectF &rect, int angle)
{
    painter.translate(rect.center());
    painter.rotate(angle);
    const QSizeF size = angle % 180 == 0 ? rect.size() : rect.size().transposed();
    painter.translate(-size.width() / 2, -size.height() / 2);
    return size;
}

double sumOf(const QVector<double> &heights)
{
    double sum = 0;
    for (const double height : heights)
        sum += height;
    return sum;
}

// Rows that may be of any height share what the others leave.
QVector<double> fittingHeights(const QVariantList &told, double modules)
{
    QVector<double> heights;
    int open = 0;
    for (const QVariant &height : told) {
        heights.append(height.toDouble());
        open += height.toDouble() <= 0;
    }
    const double rest = std::max(modules - sumOf(heights), double(open));
    for (double &height : heights)
        if (height <= 0)
            height = rest / open;
    return heights;
}

} // namespace

QVariantMap BarcodePainter::resolve(const QVariantMap &properties, ReportScope &scope,
                                    ContentExpander &expander) const
{
    const QVariant value = ItemContent::valueOf(properties, "content", scope, expander);
    const QString content = value.isValid() ? ValueText::usual(value) : QString();
    if (content.isEmpty() && properties.value("hideIfEmpty").toBool())
        return {{"isHidden", true}};
    const BarcodeSymbol symbol = BarcodeSymbol::encode(
        properties.value(QStringLiteral("barcodeType"), usualType).toString(), content);
    if (!symbol.fault.isEmpty())
        return ItemContent::refused(scope, symbol.fault);
    const int angle = properties.value(QStringLiteral("angle")).toInt();
    return {{"dark", symbol.dark},
            {"columns", symbol.columns},
            {"heights", heightsOf(symbol)},
            {"isSquare", symbol.isSquare},
            {"quietColumns", symbol.quietColumns},
            {"quietRows", symbol.quietRows},
            {"text", properties.value("hideText").toBool() ? QString() : symbol.text},
            {"angle", ((angle / 90) * 90 % 360 + 360) % 360},
            {"foreground", colorOf(properties, "foregroundColor", Qt::black)},
            {"background", colorOf(properties, "backgroundColor", Qt::white)}};
}

void BarcodePainter::paint(QPainter &painter, const QRectF &rect, double unitsPerMillimetre,
                           const QVariantMap &resolved) const
{
    if (resolved.value(QStringLiteral("isHidden")).toBool() || rect.isEmpty())
        return;
    painter.save();
    painter.fillRect(rect, resolved.value("background").value<QColor>());
    const QSizeF size = turn(painter, rect, resolved.value("angle").toInt());
    const QString text = resolved.value(QStringLiteral("text")).toString();
    const double textHeight = text.isEmpty() ? 0 : textMillimetres * unitsPerMillimetre;
    const double barsHeight = std::max(size.height() - textHeight, 0.0);

    const int columns = resolved.value(QStringLiteral("columns")).toInt();
    const QVariantList told = resolved.value(QStringLiteral("heights")).toList();
    const double across = columns + 2 * resolved.value("quietColumns").toInt();
    const int quietRows = resolved.value(QStringLiteral("quietRows")).toInt();
    double module = size.width() / across;
    if (resolved.value(QStringLiteral("isSquare")).toBool())
        module = std::min(module, barsHeight / (sumOf(fittingHeights(told, 0)) + 2 * quietRows));
    const QVector<double> heights = fittingHeights(told, barsHeight / module - 2 * quietRows);
    const double high = sumOf(heights) * module;
    const double squeeze = std::min(1.0, (barsHeight - 2 * quietRows * module) / high);

    painter.save();
    painter.translate((size.width() - columns * module) / 2, (barsHeight - high * squeeze) / 2);
    painter.scale(module, module * squeeze);
    painter.fillPath(modulesOf(resolved.value("dark").toBitArray(), columns, heights),
                     resolved.value("foreground").value<QColor>());
    painter.restore();
    if (!text.isEmpty()) {
        QFont font(QStringLiteral("DejaVu Sans Mono"));
        font.setPixelSize(std::max(1, int(std::lround(3 * unitsPerMillimetre))));
        painter.setFont(font);
        painter.setPen(resolved.value("foreground").value<QColor>());
        painter.drawText(QRectF(0, barsHeight, size.width(), textHeight),
                         Qt::AlignHCenter | Qt::AlignBottom | Qt::TextDontClip, text);
    }
    painter.restore();
}

} // namespace LimeReport
