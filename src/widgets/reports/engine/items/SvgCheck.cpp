#include "widgets/reports/engine/items/SvgCheck.h"

#include <QSet>
#include <QXmlStreamReader>

namespace LimeReport {

namespace {

constexpr int mostBytes = 8 << 20;
constexpr int deepest = 64;
constexpr int mostReferences = 1000;

class Check
{
public:
    explicit Check(const QByteArray &svg) : m_reader(svg) {}

    QString run()
    {
        while (!m_reader.atEnd() && m_fault.isEmpty())
            readNext();
        if (m_fault.isEmpty() && m_reader.hasError())
            m_fault = QStringLiteral("это не XML: %1").arg(m_reader.errorString());
        if (m_fault.isEmpty() && m_holdsUse.intersects(m_used))
            m_fault = QStringLiteral("ссылки ведут на то, в чём есть ссылки");
        return m_fault;
    }

private:
    void readNext()
    {
        switch (m_reader.readNext()) {
        case QXmlStreamReader::DTD:
            if (!m_reader.entityDeclarations().isEmpty())
                m_fault = QStringLiteral("в нём объявлены сущности");
            break;
        case QXmlStreamReader::StartElement:
            begin();
            break;
        case QXmlStreamReader::EndElement:
            m_ids.removeLast();
            break;
        default:
            break;
        }
    }

    void begin()
    {
        const QXmlStreamAttributes attributes = m_reader.attributes();
        if (m_ids.isEmpty() && m_reader.name() != QLatin1String("svg"))
            m_fault = QStringLiteral("это не SVG");
        m_ids.append(attributes.value(QStringLiteral("id")).toString());
        if (m_ids.size() > deepest)
            m_fault = QStringLiteral("вложенность больше %1").arg(deepest);
        const bool isUse = m_reader.name() == QLatin1String("use");
        for (const QXmlStreamAttribute &attribute : attributes)
            if (attribute.name() == QLatin1String("href"))
                readReference(attribute.value().trimmed().toString(), isUse);
        if (isUse)
            for (const QString &id : qAsConst(m_ids))
                m_holdsUse.insert(id);
        m_holdsUse.remove(QString());
    }

    void readReference(const QString &target, bool isUse)
    {
        if (!target.startsWith('#') && !target.startsWith(QLatin1String("data:")))
            m_fault = QStringLiteral("он ссылается на другой файл: «%1»").arg(target.left(60));
        if (!isUse)
            return;
        m_used.insert(target.mid(1));
        if (++m_references > mostReferences)
            m_fault = QStringLiteral("в нём больше %1 ссылок").arg(mostReferences);
    }

    QXmlStreamReader m_reader;
    QStringList m_ids; // of the elements that are open
    QSet<QString> m_used;
    QSet<QString> m_holdsUse;
    int m_references = 0;
    QString m_fault;
};

} // namespace

QString svgFault(const QByteArray &svg)
{
    if (svg.size() > mostBytes)
        return QStringLiteral("он больше %1 МБ").arg(mostBytes >> 20);
    return Check(svg).run();
}

} // namespace LimeReport
