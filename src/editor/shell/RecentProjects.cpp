#include "editor/shell/RecentProjects.h"

#include "utils/settings/Configurator.h"

#include <QJsonArray>

namespace Editor {

namespace {

constexpr int keptAtMost = 10;
const QString key = QStringLiteral("recent");

Utils::Configurator settings()
{
    return {QStringLiteral("ConfiguratorProjects"), QStringLiteral("configurator.json")};
}

void keep(const QStringList &directories)
{
    QJsonObject kept;
    kept.insert(key, QJsonArray::fromStringList(directories));
    (void)settings().save(kept); // logged; the project is open all the same
}

} // namespace

QStringList RecentProjects::all()
{
    QJsonObject kept;
    (void)settings().load(kept); // a damaged file is set aside and logged: the list is empty then
    QStringList found;
    const QJsonArray directories = kept.value(key).toArray();
    for (const QJsonValue &directory : directories)
        found << directory.toString();
    return found;
}

void RecentProjects::remember(const QString &directory)
{
    QStringList directories = all();
    directories.removeAll(directory);
    directories.prepend(directory);
    keep(directories.mid(0, keptAtMost));
}

void RecentProjects::forget(const QString &directory)
{
    QStringList directories = all();
    directories.removeAll(directory);
    keep(directories);
}

} // namespace Editor
