#include "widgets/reports/engine/items/SvgPainter.h"

#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/items/ItemContent.h"
#include "widgets/reports/engine/items/ItemFault.h"
#include "widgets/reports/engine/items/SvgCheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSvgRenderer>

namespace LimeReport {

namespace {

constexpr qint64 mostBytes = 8 << 20;

// A file below the directory, wherever links lead; an error otherwise.
QByteArray readBelow(const QString &directory, const QString &file, ItemFault *fault)
{
    const QString root = QFileInfo(directory).canonicalFilePath();
    const QString path = QFileInfo(QDir(directory), file).canonicalFilePath();
    if (directory.isEmpty() || root.isEmpty() || !path.startsWith(root + '/')) {
        *fault = {QStringLiteral("в папке отчёта нет файла «%1»").arg(file),
                  QStringLiteral("нет файла рисунка")};
        return QByteArray();
    }
    QFile opened(path);
    if (opened.size() <= mostBytes && opened.open(QIODevice::ReadOnly))
        return opened.readAll();
    *fault = {QStringLiteral("файл «%1» не читается: %2").arg(file, opened.errorString()),
              QStringLiteral("файл рисунка не читается")};
    return QByteArray();
}

QByteArray bytesOf(const QVariantMap &properties, ReportScope &scope, ContentExpander &expander,
                   ItemFault *fault)
{
    const auto text = [&properties](const char *name) {
        return properties.value(QLatin1String(name)).toString();
    };
    if (!text("datasource").isEmpty() && !text("field").isEmpty())
        return ItemContent::valueOf(properties, "", scope, expander).toByteArray();
    if (!text("variable").isEmpty())
        return scope.variable(text("variable")).toByteArray();
    if (!text("resourcePath").isEmpty())
        return readBelow(scope.filesDirectory(), text("resourcePath"), fault);
    const QByteArray image = properties.value(QStringLiteral("image")).toByteArray();
    return image.trimmed().startsWith('<') ? image : QByteArray::fromHex(image);
}

} // namespace

QVariantMap SvgPainter::resolve(const QVariantMap &properties, ReportScope &scope,
                                ContentExpander &expander) const
{
    ItemFault fault;
    const QByteArray svg = bytesOf(properties, scope, expander, &fault);
    const QString refusal = fault.isEmpty() && !svg.isEmpty() ? svgFault(svg) : QString();
    if (fault.isEmpty() && svg.isEmpty())
        fault = {QStringLiteral("there is no drawing"), QStringLiteral("нет рисунка")};
    else if (!refusal.isEmpty())
        fault = {QStringLiteral("рисунок не принят: %1").arg(refusal),
                 QStringLiteral("рисунок не принят")};
    return fault.isEmpty() ? QVariantMap{{"svg", svg}} : ItemContent::refused(scope, fault);
}

void SvgPainter::paint(QPainter &painter, const QRectF &rect, double unitsPerMillimetre,
                       const QVariantMap &resolved) const
{
    QSvgRenderer renderer(resolved.value(QStringLiteral("svg")).toByteArray());
    const QSizeF size = renderer.viewBoxF().size();
    if (!renderer.isValid() || size.isEmpty() || rect.isEmpty())
        return;
    QRectF box(QPointF(), size.scaled(rect.size(), Qt::KeepAspectRatio));
    box.moveCenter(rect.center());
    renderer.render(&painter, box);
}

} // namespace LimeReport
