#include "widgets/reports/engine/template/TemplateXml.h"

#include "widgets/reports/engine/faults/FaultText.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QXmlStreamReader>

#include <cmath>

namespace LimeReport {

namespace {

constexpr int DeepestNesting = 64;
constexpr int MostObjects = 100000;
constexpr int MostProblems = 100;

// What a layout can still add up without overflow, 0.1 mm.
constexpr double LargestLength = 1e6;

double attribute(const QXmlStreamAttributes &attributes, const QString &name)
{
    const double value = attributes.value(name).toDouble();
    return std::isfinite(value) ? qBound(-LargestLength, value, LargestLength) : 0;
}

QRectF rectangle(const QXmlStreamAttributes &attributes)
{
    return QRectF(attribute(attributes, QStringLiteral("x")),
                  attribute(attributes, QStringLiteral("y")),
                  attribute(attributes, QStringLiteral("width")),
                  attribute(attributes, QStringLiteral("height")));
}

bool isSet(const QXmlStreamAttributes &attributes, const QString &name)
{
    const auto value = attributes.value(name);
    return value == QLatin1String("1") || value == QLatin1String("true");
}

QFont font(const QXmlStreamAttributes &attributes)
{
    QFont made(attributes.value(QLatin1String("family")).toString());
    const double size = attributes.value(QLatin1String("pointSize")).toDouble();
    made.setPointSizeF(std::isfinite(size) ? qBound(1.0, size > 0 ? size : 10.0, 1000.0) : 10.0);
    const auto weight = attributes.value(QLatin1String("weight"));
    if (!weight.isEmpty())
        made.setWeight(qBound(0, weight.toInt(), 99));
    else if (isSet(attributes, QStringLiteral("bold")))
        made.setBold(true);
    made.setItalic(isSet(attributes, QStringLiteral("italic")));
    made.setUnderline(isSet(attributes, QStringLiteral("underline")));
    return made;
}

} // namespace

void TemplateXml::tell(const QXmlStreamReader &xml, const QString &text)
{
    if (m_problems.size() == MostProblems)
        m_problems.append(QStringLiteral("Остальные ошибки не перечислены."));
    if (m_problems.size() < MostProblems)
        m_problems.append(QStringLiteral("строка %1: %2").arg(xml.lineNumber()).arg(text));
}

QVariantMap TemplateXml::read(const QByteArray &data)
{
    QXmlStreamReader xml(data);
    QVariantMap root;
    if (readToRoot(xml)) {
        if (xml.name() != QLatin1String("Report"))
            xml.raiseError(QStringLiteral("корневой элемент — <%1>, а не <Report>")
                               .arg(xml.name().toString()));
        else if (xml.readNextStartElement())
            root = object(xml, 0);
        else
            xml.raiseError(QStringLiteral("<Report> пуст"));
    }
    // What stands behind the object is still read: a file that was cut off has to be told.
    while (!xml.atEnd())
        xml.readNext();
    if (xml.hasError()) {
        m_error = QStringLiteral("строка %1, столбец %2: %3")
                      .arg(xml.lineNumber())
                      .arg(xml.columnNumber())
                      .arg(FaultText::xml(xml.errorString()));
        root.clear();
    }
    return root;
}

// Templates have no document type, whose entities would name other files or multiply.
bool TemplateXml::readToRoot(QXmlStreamReader &xml)
{
    while (!xml.atEnd() && xml.readNext() != QXmlStreamReader::StartElement) {
        if (xml.tokenType() == QXmlStreamReader::DTD)
            xml.raiseError(QStringLiteral("в нём объявлен тип документа (сущности), что в шаблонах "
                                          "не допускается"));
    }
    return xml.isStartElement();
}

bool TemplateXml::enter(QXmlStreamReader &xml, int depth)
{
    if (depth > DeepestNesting)
        xml.raiseError(QStringLiteral("вложенность объектов больше %1").arg(DeepestNesting));
    else if (++m_objects > MostObjects)
        xml.raiseError(QStringLiteral("объектов больше %1").arg(MostObjects));
    return !xml.hasError();
}

QVariantMap TemplateXml::object(QXmlStreamReader &xml, int depth)
{
    QVariantMap made;
    if (!enter(xml, depth))
        return made;
    made.insert(ClassName(), xml.attributes().value(ClassName()).toString());
    while (xml.readNextStartElement()) {
        const QString name = xml.name().toString();
        const QVariant value = property(xml, depth);
        if (value.isValid())
            made.insert(name, value);
    }
    return made;
}

QVariantList TemplateXml::collection(QXmlStreamReader &xml, int depth)
{
    QVariantList made;
    if (!enter(xml, depth))
        return made;
    while (xml.readNextStartElement())
        made.append(object(xml, depth + 1));
    return made;
}

QVariant TemplateXml::property(QXmlStreamReader &xml, int depth)
{
    const QString type = xml.attributes().value(QLatin1String("Type")).toString();
    if (type == QLatin1String("Object"))
        return object(xml, depth + 1);
    if (type == QLatin1String("Collection"))
        return collection(xml, depth + 1);
    if (type == QLatin1String("QString"))
        return xml.readElementText(QXmlStreamReader::SkipChildElements);
    if (type == QLatin1String("QImage") || type == QLatin1String("QByteArray"))
        return QByteArray::fromHex(
            xml.readElementText(QXmlStreamReader::SkipChildElements).toLatin1());
    const QVariant made = xml.attributes().hasAttribute(QLatin1String("Value"))
                              ? number(xml, type)
                              : structure(xml, type);
    xml.skipCurrentElement();
    return made;
}

QVariant TemplateXml::number(QXmlStreamReader &xml, const QString &type)
{
    const QString value = xml.attributes().value(QLatin1String("Value")).toString();
    bool isNumber = true;
    QVariant made;
    if (type == QLatin1String("bool")) {
        return value == QLatin1String("1") || value == QLatin1String("true");
    } else if (type == QLatin1String("QColor")) {
        const QColor color(value);
        isNumber = color.isValid();
        made = color;
    } else if (type == QLatin1String("qreal") || type == QLatin1String("double")) {
        const double real = value.toDouble(&isNumber);
        isNumber = isNumber && std::isfinite(real);
        made = real;
    } else if (type == QLatin1String("int")) {
        made = value.toInt(&isNumber);
    } else if (type == QLatin1String("enumAndFlags")) {
        const int number = value.toInt(&isNumber);
        return isNumber ? QVariant(number) : QVariant(value);
    } else {
        made = value;
    }
    if (isNumber)
        return made;
    tell(xml, QStringLiteral("%1: «%2» — не %3").arg(xml.name().toString(), value, type));
    return QVariant();
}

QVariant TemplateXml::structure(QXmlStreamReader &xml, const QString &type)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    if (type == QLatin1String("QRect") || type == QLatin1String("QRectF"))
        return rectangle(attributes);
    if (type == QLatin1String("QFont"))
        return font(attributes);
    QVariantMap made;
    for (const QXmlStreamAttribute &one : attributes)
        made.insert(one.name().toString(), one.value().toString());
    if (type.isEmpty())
        tell(xml, QStringLiteral("у %1 нет Type").arg(xml.name().toString()));
    else
        tell(xml, QStringLiteral("у %1 неизвестный Type «%2»").arg(xml.name().toString(), type));
    return made;
}

} // namespace LimeReport
