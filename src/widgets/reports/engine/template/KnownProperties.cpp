#include "widgets/reports/engine/template/KnownProperties.h"

#include "widgets/reports/engine/template/TemplateItem.h"

#include <QSet>

namespace LimeReport {

namespace {

using Names = QSet<QString>;

Names names(const char *list)
{
    const QStringList words = QString::fromLatin1(list).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return Names(words.begin(), words.end());
}

// What every item may have, with what only an editor needs.
const Names &common()
{
    static const Names known = names(
        "borders borderColor borderLineSize borderStyle backgroundColor backgroundMode itemVisible "
        "locked zOrder parentName itemLocation itemAlign selectable gridStep objectName");
    return known;
}

const Names &band()
{
    static const Names known = names(
        "autoHeight printIfEmpty parentBand bandIndex bandType splittable datasource columnsCount "
        "columnsFillDirection startNewPage alternateBackgroundColor keepFooterTogether "
        "groupFieldName condition keepGroupTogether reprintOnEachPage printOnFirstPage");
    return known;
}

const Names &ofClass(const QString &name)
{
    static const Names text =
        names("content alignment font fontColor margin autoHeight angle format valueType trimValue "
              "allowHTML followTo hideIfEmpty stretchToMaxHeight");
    static const Names shape = names(
        "shape shapeType shapeColor shapeBrush shapeBrushColor lineWidth penStyle cornerRadius "
        "stretchToMaxHeight");
    static const Names image = names(
        "image datasource field resourcePath scale keepAspectRatio center stretchToMaxHeight");
    static const Names layout = names("layoutType stretchToMaxHeight");
    static const Names page =
        names("pageOrientation pageSize leftMargin topMargin rightMargin bottomMargin");
    static const Names none;
    if (name == QLatin1String("TextItem"))
        return text;
    if (name == QLatin1String("ShapeItem"))
        return shape;
    if (name == QLatin1String("ImageItem"))
        return image;
    if (name == QLatin1String("HLayout") || name == QLatin1String("VLayout"))
        return layout;
    return name.startsWith(QLatin1String("Page")) && name.endsWith(QLatin1String("Item")) ? page
                                                                                          : none;
}

bool isBand(const QString &name)
{
    static const Names bands = names("PageHeader ReportHeader DataHeader GroupHeader Data "
                                     "SubDetailHeader SubDetail SubDetailFooter GroupFooter "
                                     "DataFooter ReportFooter TearOffBand PageFooter");
    return bands.contains(name);
}

} // namespace

QStringList unknownProperties(const TemplateItem &item)
{
    const QString name = item.className.mid(item.className.lastIndexOf(QLatin1Char(':')) + 1);
    const Names &own = isBand(name) ? band() : ofClass(name);
    QStringList unknown;
    if (own.isEmpty())
        return unknown;
    for (auto one = item.properties.begin(); one != item.properties.end(); ++one) {
        if (!own.contains(one.key()) && !common().contains(one.key()))
            unknown.append(one.key());
    }
    return unknown;
}

} // namespace LimeReport
