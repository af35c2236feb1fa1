#pragma once

#include <QString>
#include <QStringList>

/// Writes templates for tests.
namespace TemplateText {

inline QString property(const QString &name, const QString &type, const QString &value)
{
    if (type == QLatin1String("QString"))
        return QStringLiteral("<%1 Type=\"QString\">%2</%1>").arg(name, value.toHtmlEscaped());
    return QStringLiteral("<%1 Type=\"%2\" Value=\"%3\"/>").arg(name, type, value);
}

inline QString whole(const QString &name, int value)
{
    return property(name, QStringLiteral("int"), QString::number(value));
}

inline QString flag(const QString &name, bool value = true)
{
    return property(name, QStringLiteral("bool"),
                    value ? QStringLiteral("1") : QStringLiteral("0"));
}

inline QString text(const QString &name, const QString &value)
{
    return property(name, QStringLiteral("QString"), value);
}

/// What stands inside an object: its geometry (0.1 mm), properties and children.
inline QString body(const QString &name, int x, int y, int width, int height,
                    const QString &properties, const QStringList &children)
{
    return QStringLiteral("%1<geometry Type=\"QRect\" x=\"%2\" y=\"%3\" width=\"%4\" "
                          "height=\"%5\"/>%6<children Type=\"Collection\">%7</children>")
        .arg(text(QStringLiteral("objectName"), name))
        .arg(x)
        .arg(y)
        .arg(width)
        .arg(height)
        .arg(properties, children.join(QString()));
}

inline QString object(const QString &className, const QString &name, int x, int y, int width,
                      int height, const QString &properties = QString(),
                      const QStringList &children = {})
{
    return QStringLiteral("<item Type=\"Object\" ClassName=\"%1\">%2</item>")
        .arg(className, body(name, x, y, width, height, properties, children));
}

inline QString item(const QString &content, int x = 0, int y = 0, int width = 800, int height = 50,
                    const QString &properties = QString())
{
    return object(QStringLiteral("TextItem"), QStringLiteral("text"), x, y, width, height,
                  text(QStringLiteral("content"), content) + properties);
}

/// A band of that height with these items.
inline QString band(const QString &className, const QString &name, int height,
                    const QStringList &items, const QString &properties = QString())
{
    return object(className, name, 0, 0, 1900, height, properties, items);
}

/// Sheets are 210 x 297 mm with margins of 10 mm: 2770 units are left for bands.
inline QString page(const QStringList &bands, const QString &properties = QString())
{
    QString margins;
    for (const char *side : {"leftMargin", "topMargin", "rightMargin", "bottomMargin"})
        margins += property(QLatin1String(side), QStringLiteral("qreal"), QStringLiteral("10"));
    return QStringLiteral("<item Type=\"Object\" ClassName=\"LimeReport::PageDesignIntf\">"
                          "<pageItem Type=\"Object\" ClassName=\"PageItem\">%1</pageItem></item>")
        .arg(body(QStringLiteral("page"), 0, 0, 2100, 2970, margins + properties, bands));
}

inline QString report(const QStringList &pages)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><Report>"
                          "<object ClassName=\"LimeReport::ReportEnginePrivate\" Type=\"Object\">"
                          "<pages Type=\"Collection\">%1</pages></object></Report>")
        .arg(pages.join(QString()));
}

} // namespace TemplateText
