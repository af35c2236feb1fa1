#include "widgets/reports/engine/data/TemplateSources.h"

#include <algorithm>

namespace LimeReport {

namespace {

QString text(const QVariantMap &properties, const char *name)
{
    return properties.value(QLatin1String(name)).toString().trimmed();
}

DetailLink readLink(const QVariantMap &properties, QStringList &errors)
{
    DetailLink link;
    link.name = text(properties, "name");
    link.master = text(properties, "master");
    link.detail = text(properties, "child");
    for (const QVariant &pair : properties.value("fieldsCorrelation").toList()) {
        link.masterColumns.append(text(pair.toMap(), "master"));
        link.detailColumns.append(text(pair.toMap(), "detail"));
    }
    if (link.name.isEmpty())
        link.name = link.detail;
    const bool isWhole = !link.master.isEmpty() && !link.detail.isEmpty() &&
                         !link.masterColumns.isEmpty() && !link.masterColumns.contains(QString()) &&
                         !link.detailColumns.contains(QString());
    if (isWhole)
        return link;
    errors.append(
        QStringLiteral("источник данных «%1»: для связи нужны master, child и fieldsCorrelation "
                       "с master и detail каждой пары; добавьте их в шаблон")
            .arg(link.name));
    return DetailLink();
}

// Whether the masters of `name` lead back to it.
bool isCircle(const QList<DetailLink> &links, const QString &name)
{
    QString master = name;
    for (int step = 0; step <= links.size(); ++step) {
        const auto link = std::find_if(links.begin(), links.end(),
                                       [&master](const DetailLink &l) { return l.name == master; });
        if (link == links.end())
            return false;
        master = link->master;
    }
    return true;
}

} // namespace

TemplateSources TemplateSources::read(const QVariantMap &properties)
{
    TemplateSources told;
    for (const QVariant &item : properties.value("variables").toList()) {
        const QVariantMap variable = item.toMap();
        if (!text(variable, "name").isEmpty())
            told.variables.insert(text(variable, "name"), variable.value("value"));
    }
    for (const QVariant &item : properties.value("subproxies").toList()) {
        const DetailLink link = readLink(item.toMap(), told.errors);
        if (link.name.isEmpty())
            continue;
        told.links.append(link);
        if (isCircle(told.links, link.name)) {
            told.errors.append(
                QStringLiteral("источник данных «%1»: его главные источники ведут к нему самому; "
                               "исправьте шаблон")
                    .arg(link.name));
            told.links.removeLast();
        }
    }
    return told;
}

} // namespace LimeReport
