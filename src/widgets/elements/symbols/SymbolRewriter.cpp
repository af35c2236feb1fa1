#include "widgets/elements/symbols/SymbolRewriter.h"

#include <QHash>

namespace Widgets {

namespace {

const QString fillName = QStringLiteral("fill");
const QString strokeName = QStringLiteral("stroke");
const QString none = QStringLiteral("none");
const QString halvesId = QStringLiteral("symbol-halves");

QStringList wordsOf(const QXmlStreamAttributes &attributes)
{
    return attributes.value(QLatin1String("class")).toString().split(' ', Qt::SkipEmptyParts);
}

/// What is drawn with, whether as attributes or as a style.
QHash<QString, QString> paintsOf(const QXmlStreamAttributes &attributes)
{
    QHash<QString, QString> paints;
    const auto take = [&paints](const QString &name, const QString &value) {
        if (name == fillName || name == strokeName)
            paints[name] = value;
    };
    for (const QXmlStreamAttribute &attribute : attributes)
        take(attribute.qualifiedName().toString(), attribute.value().toString());
    const QString style = attributes.value(QLatin1String("style")).toString();
    for (const QString &rule : style.split(';'))
        take(rule.section(':', 0, 0).trimmed(), rule.section(':', 1).trimmed());
    return paints;
}

QString withoutPaints(const QString &style)
{
    QStringList kept;
    for (const QString &rule : style.split(';', Qt::SkipEmptyParts)) {
        const QString name = rule.section(':', 0, 0).trimmed();
        if (name != fillName && name != strokeName)
            kept << rule;
    }
    return kept.join(';');
}

bool isLeftOut(const QStringRef &name)
{
    return name == QLatin1String("script") || name == QLatin1String("foreignObject") ||
           name == QLatin1String("set") || name.startsWith(QLatin1String("animate"));
}

QString lookName(Nodes::SymbolLook look)
{
    static const char *const names[] = {"plain", "off", "on", "moving", "fault", "unknown"};
    return QLatin1String(names[int(look)]);
}

} // namespace

SymbolRewriter::SymbolRewriter(const QByteArray &svg, const SymbolStyle &style)
    : m_style(style), m_reader(svg), m_writer(&m_text)
{
    m_reader.setNamespaceProcessing(false); // prefixes are handed on as they are
}

QByteArray SymbolRewriter::rewritten()
{
    while (!m_reader.atEnd()) {
        switch (m_reader.readNext()) {
        case QXmlStreamReader::StartElement:
            startElement();
            break;
        case QXmlStreamReader::EndElement:
            m_writer.writeEndElement();
            m_parts.removeLast();
            break;
        case QXmlStreamReader::Characters:
            m_writer.writeCharacters(m_reader.text().toString());
            break;
        default:
            break;
        }
    }
    return m_text;
}

void SymbolRewriter::startElement()
{
    const QXmlStreamAttributes attributes = m_reader.attributes();
    if (isLeftOut(m_reader.name()) || !isShown(attributes)) {
        m_reader.skipCurrentElement();
        return;
    }
    const bool isRoot = m_parts.isEmpty();
    const Part own = partOf(attributes);
    const Part part = own == Part::None && !isRoot ? m_parts.last() : own;
    m_writer.writeStartElement(m_reader.qualifiedName().toString());
    writeAttributes(part, own != Part::None);
    m_parts.append(part);
    if (isRoot && m_style.half.isValid())
        writeHalves();
}

void SymbolRewriter::writeHalves()
{
    m_writer.writeStartElement(QStringLiteral("defs"));
    m_writer.writeStartElement(QStringLiteral("linearGradient"));
    m_writer.writeAttribute(QStringLiteral("id"), halvesId);
    m_writer.writeAttribute(QStringLiteral("x1"), QStringLiteral("0"));
    m_writer.writeAttribute(QStringLiteral("y1"), QStringLiteral("0"));
    m_writer.writeAttribute(QStringLiteral("x2"), QStringLiteral("1"));
    m_writer.writeAttribute(QStringLiteral("y2"), QStringLiteral("1"));
    for (const QColor &color : {m_style.half, m_style.body}) {
        m_writer.writeEmptyElement(QStringLiteral("stop"));
        m_writer.writeAttribute(QStringLiteral("offset"), color == m_style.half
                                                              ? QStringLiteral("0.499")
                                                              : QStringLiteral("0.501"));
        m_writer.writeAttribute(QStringLiteral("stop-color"), color.name());
    }
    m_writer.writeEndElement();
    m_writer.writeEndElement();
}

SymbolRewriter::Part SymbolRewriter::partNamed(const QString &word)
{
    static const QHash<QString, Part> parts{{QStringLiteral("body"), Part::Body},
                                            {QStringLiteral("fill"), Part::Fill},
                                            {QStringLiteral("line"), Part::Line},
                                            {QStringLiteral("sign"), Part::Sign},
                                            {QStringLiteral("level"), Part::Level}};
    QString name = word;
    while (!name.isEmpty() && !name.back().isLetter()) // drawing programs number their ids
        name.chop(1);
    return parts.value(name, Part::None);
}

SymbolRewriter::Part SymbolRewriter::partOf(const QXmlStreamAttributes &attributes)
{
    for (const QString &word : wordsOf(attributes)) {
        if (const Part part = partNamed(word); part != Part::None)
            return part;
    }
    return partNamed(attributes.value(QLatin1String("id")).toString());
}

bool SymbolRewriter::isShown(const QXmlStreamAttributes &attributes) const
{
    bool isBound = false;
    for (const QString &word : wordsOf(attributes)) {
        if (!word.startsWith(QLatin1String("when-")))
            continue;
        if (word.midRef(5) == lookName(m_style.look))
            return true;
        isBound = true;
    }
    return !isBound;
}

void SymbolRewriter::writeAttributes(Part part, bool isOwn)
{
    const QXmlStreamAttributes attributes = m_reader.attributes();
    const bool isLevel = part == Part::Level && !m_hasLevel;
    for (const QXmlStreamAttribute &attribute : attributes) {
        const QString name = attribute.qualifiedName().toString();
        const QString value = attribute.value().toString();
        const bool isReplaced = name == fillName || name == strokeName || name == "class";
        if (part == Part::None)
            m_writer.writeAttribute(name, value);
        else if (name == QLatin1String("style"))
            m_writer.writeAttribute(name, withoutPaints(value));
        else if (!isReplaced && !(isLevel && name == QLatin1String("id")))
            m_writer.writeAttribute(name, value);
    }
    if (isLevel)
        m_writer.writeAttribute(QStringLiteral("id"), QLatin1String(SymbolStyle::LevelId));
    m_hasLevel |= isLevel;
    if (part != Part::None)
        writePaints(part, isOwn);
}

void SymbolRewriter::writePaints(Part part, bool isOwn)
{
    const QHash<QString, QString> paints = paintsOf(m_reader.attributes());
    QString surface = paints.value(fillName);
    QString outline = paints.value(strokeName);
    const bool isSurface = part == Part::Body || part == Part::Fill;
    const bool isOutlined = part == Part::Body || part == Part::Line;
    if (isSurface && surface.isEmpty() && isOwn)
        surface = QStringLiteral("#000000"); // what SVG fills with unless it is told
    if (part == Part::Level)
        surface = m_style.level.isValid() ? m_style.level.name() : none;
    else if (isSurface && m_style.half.isValid() && !surface.isEmpty() && surface != none)
        surface = "url(#" + halvesId + ')';
    else if (part != Part::Line)
        surface = inColor(surface, isSurface ? m_style.body : m_style.sign);
    if (isOutlined || part == Part::Sign)
        outline = inColor(outline, isOutlined ? m_style.line : m_style.sign);
    if (!surface.isEmpty())
        m_writer.writeAttribute(fillName, surface);
    if (!outline.isEmpty())
        m_writer.writeAttribute(strokeName, outline);
    const QString dashes = QStringLiteral("stroke-dasharray");
    if (isOutlined && m_style.isDashed && !m_reader.attributes().hasAttribute(dashes))
        m_writer.writeAttribute(dashes, QStringLiteral("4 3"));
}

// What is not painted in the drawing is not painted in any style.
QString SymbolRewriter::inColor(const QString &drawn, const QColor &color)
{
    return drawn.isEmpty() || drawn == none || !color.isValid() ? drawn : color.name();
}

} // namespace Widgets
