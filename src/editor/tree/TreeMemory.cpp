#include "editor/tree/TreeMemory.h"

#include "utils/settings/Configurator.h"

#include <QJsonArray>
#include <QJsonObject>

namespace Editor {

namespace {

const QString settingsName = QStringLiteral("expanded");
const QString orderKey = QStringLiteral("order"); ///< of projects, the last one at the end

} // namespace

TreeMemory::TreeMemory(QString fileName) : m_fileName(std::move(fileName)) {}

QSet<quint64> TreeMemory::recall(const QString &project) const
{
    QJsonObject kept;
    QSet<quint64> expanded;
    if (!Utils::Configurator(settingsName, m_fileName).load(kept))
        return expanded;
    const QJsonArray ids = kept.value(project).toArray();
    for (const QJsonValue &id : ids)
        expanded.insert(quint64(id.toDouble()));
    return expanded;
}

void TreeMemory::keep(const QString &project, const QSet<quint64> &expanded) const
{
    const Utils::Configurator file(settingsName, m_fileName);
    QJsonObject kept;
    (void)file.load(kept); // what is damaged has been set aside
    QJsonArray ids;
    for (const quint64 id : expanded) {
        if (ids.size() == KeptNodes)
            break;
        ids.append(double(id));
    }
    QJsonArray order;
    const QJsonArray before = kept.value(orderKey).toArray();
    for (const QJsonValue &known : before) {
        if (known.toString() != project)
            order.append(known);
    }
    order.append(project);
    while (order.size() > KeptProjects)
        kept.remove(order.takeAt(0).toString());
    kept.insert(orderKey, order);
    kept.insert(project, ids);
    (void)file.save(kept);
}

} // namespace Editor
