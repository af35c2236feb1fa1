#include "e2e/ProjectFacts.h"

#include <QFile>
#include <QXmlStreamReader>

namespace EndToEnd {

namespace {

QString nameOf(const QXmlStreamReader &xml)
{
    return xml.attributes().value(QLatin1String("name")).toString();
}

int numberOf(const QXmlStreamReader &xml, const char *attribute)
{
    return xml.attributes().value(QLatin1String(attribute)).toInt();
}

bool isContainer(const QXmlStreamReader &xml)
{
    return xml.name().startsWith(QLatin1String("window")) || xml.name() == QLatin1String("frame") ||
           xml.name().startsWith(QLatin1String("composition"));
}

bool isElement(const QXmlStreamReader &xml)
{
    static const QSet<QString> kinds{"label",   "multiLabel", "multiImage", "bargraph",
                                     "editBox", "comboBox",   "checkBox"};
    return kinds.contains(xml.name().toString());
}

} // namespace

bool ProjectFacts::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QXmlStreamReader xml(&file);
    QString container;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (isContainer(xml))
            container = nameOf(xml);
        take(xml, container);
    }
    return !xml.hasError();
}

void ProjectFacts::take(const QXmlStreamReader &xml, const QString &container)
{
    const int id = numberOf(xml, "id");
    if (xml.name() == QLatin1String("modbusSignal"))
        m_remoteSignals.insert(id);
    const QString key = container + QLatin1Char('/');
    m_places[isContainer(xml) ? key : key + nameOf(xml)] = {
        numberOf(xml, "x"), numberOf(xml, "y"), numberOf(xml, "width"), numberOf(xml, "height")};
    const int signal = numberOf(xml, "signal");
    if (!isElement(xml) || signal == 0)
        return;
    m_bound[container].insert(id);
    m_signals[id] = signal;
}

QRect ProjectFacts::placeIn(const QString &window, const QString &element) const
{
    return m_places.value(window + QLatin1Char('/') + element);
}

QPoint ProjectFacts::centreOf(const QString &window, const QString &element) const
{
    return placeIn(window, QString()).topLeft() + placeIn(window, element).center();
}

} // namespace EndToEnd
