#include "widgets/elements/symbols/SymbolCheck.h"

#include <QHash>
#include <QVector>
#include <QXmlStreamReader>

namespace Widgets {

namespace {

const QString outside = QStringLiteral("ссылается на другой файл («%1»). Уберите ссылку.");

/// How often parts of a picture are drawn when <use> repeats them.
class Repetitions
{
public:
    void open(const QString &id)
    {
        const int owner = m_open.isEmpty() ? 0 : m_open.last();
        ++m_shapes[owner];
        if (id.isEmpty()) {
            m_open.append(owner);
            return;
        }
        const int own = numberOf(id);
        m_parts[owner].append(own);
        m_open.append(own);
    }
    void close() { m_open.removeLast(); }
    void use(const QString &id) { m_parts[m_open.last()].append(numberOf(id)); }
    int depth() const { return m_open.size(); }
    /// Shapes drawn in all; more than the limit also for a picture that contains itself.
    qint64 total() { return of(0); }

private:
    static constexpr qint64 beyond = SymbolCheck::MaximumShapes + 1;
    static constexpr qint64 isBeingCounted = -1;

    int numberOf(const QString &id)
    {
        const auto known = m_numbers.constFind(id);
        if (known != m_numbers.constEnd())
            return *known;
        const int number = m_numbers.size() + 1;
        m_numbers.insert(id, number);
        return number;
    }
    qint64 of(int part)
    {
        const auto known = m_counted.constFind(part);
        if (known != m_counted.constEnd())
            return *known == isBeingCounted ? beyond : *known;
        m_counted[part] = isBeingCounted;
        qint64 count = m_shapes.value(part);
        for (const int other : m_parts.value(part))
            count = qMin(beyond, count + of(other));
        m_counted[part] = count;
        return count;
    }

    QHash<QString, int> m_numbers; // of ids; 0 is what has none
    QHash<int, qint64> m_shapes;
    QHash<int, QVector<int>> m_parts;
    QHash<int, qint64> m_counted;
    QVector<int> m_open;
};

bool reachesOut(const QString &css)
{
    if (css.contains(QLatin1String("@import")))
        return true;
    for (int at = css.indexOf(QLatin1String("url(")); at >= 0;
         at = css.indexOf(QLatin1String("url("), at + 4)) {
        const QStringRef target = css.midRef(at + 4).trimmed();
        if (!target.startsWith('#') && !target.startsWith(QLatin1String("'#")) &&
            !target.startsWith(QLatin1String("\"#")))
            return true;
    }
    return false;
}

QString checkAttributes(const QXmlStreamReader &reader, Repetitions &repetitions)
{
    for (const QXmlStreamAttribute &attribute : reader.attributes()) {
        const QString value = attribute.value().toString();
        const bool isLink = attribute.qualifiedName().endsWith(QLatin1String("href"));
        const bool names = attribute.qualifiedName().startsWith(QLatin1String("xmlns"));
        if ((isLink && !value.startsWith('#') && reader.name() != QLatin1String("a")) ||
            (!isLink && !names && reachesOut(value)))
            return outside.arg(value.left(60));
        if (isLink && reader.name() == QLatin1String("use"))
            repetitions.use(value.mid(1));
    }
    return {};
}

QString checkElement(const QXmlStreamReader &reader, Repetitions &repetitions)
{
    if (reader.name() == QLatin1String("image"))
        return QStringLiteral("содержит растровую картинку. Уберите её или возьмите элемент "
                              "«Рисунок».");
    repetitions.open(reader.attributes().value(QLatin1String("id")).toString());
    if (repetitions.depth() > SymbolCheck::MaximumDepth)
        return QStringLiteral("части вложены глубже %1 уровней. Разгруппируйте рисунок.")
            .arg(SymbolCheck::MaximumDepth);
    return checkAttributes(reader, repetitions);
}

QString checkToken(const QXmlStreamReader &reader, Repetitions &repetitions)
{
    switch (reader.tokenType()) {
    case QXmlStreamReader::DTD:
        return reader.text().contains(QLatin1String("<!ENTITY"))
                   ? QStringLiteral("объявляет сущности XML. Сохраните его как «простой SVG».")
                   : QString();
    case QXmlStreamReader::StartElement:
        return checkElement(reader, repetitions);
    case QXmlStreamReader::EndElement:
        repetitions.close();
        return {};
    case QXmlStreamReader::Characters:
        return reachesOut(reader.text().toString()) ? outside.arg(QStringLiteral("url"))
                                                    : QString();
    default:
        return {};
    }
}

} // namespace

QString SymbolCheck::refusal(const QByteArray &svg)
{
    if (svg.isEmpty())
        return QStringLiteral("файла нет, или он пуст. Добавьте файл или выберите другой.");
    if (svg.size() > MaximumBytes)
        return QStringLiteral("больше %1 МБ. Упростите рисунок.").arg(MaximumBytes >> 20);
    QXmlStreamReader reader(svg);
    reader.setNamespaceProcessing(false);
    Repetitions repetitions;
    bool isFirst = true;
    while (!reader.atEnd()) {
        reader.readNext();
        if (isFirst && reader.isStartElement()) {
            isFirst = false;
            if (!reader.qualifiedName().endsWith(QLatin1String("svg")))
                return QStringLiteral("не SVG. Выберите векторный рисунок.");
        }
        const QString reason = checkToken(reader, repetitions);
        if (!reason.isEmpty())
            return reason;
    }
    if (reader.hasError() || isFirst)
        return QStringLiteral("не SVG или повреждён (строка %1). Сохраните его заново.")
            .arg(reader.lineNumber());
    return repetitions.total() > MaximumShapes
               ? QStringLiteral("повторяет части больше %1 раз или содержит сам себя. Упростите "
                                "рисунок.")
                     .arg(MaximumShapes)
               : QString();
}

} // namespace Widgets
