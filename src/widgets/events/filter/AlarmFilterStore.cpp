#include "widgets/events/filter/AlarmFilterStore.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"

#include <QDir>

namespace Widgets {

namespace {

QString fileOf(const Nodes::systemCore &model)
{
    return QDir(QString::fromStdString(model.GetDataDirectory()))
        .filePath(QStringLiteral("config.json"));
}

} // namespace

AlarmFilterStore::AlarmFilterStore(const Nodes::systemCore &model)
    : Configurator(QStringLiteral("AlarmFilters"), fileOf(model))
{
    const Nodes::systemAuthentication *users = model.GetSystemAuthentication();
    const unsigned long user = users ? users->GetCurrentUser().GetNodeId() : 0;
    const Nodes::NodesCollection *project = model.GetNodesCollection();
    m_owner = QStringLiteral("%1/%2")
                  .arg(project ? QString::fromStdString(project->GetUuid()) : QString())
                  .arg(user);
}

AlarmFilter AlarmFilterStore::load() const
{
    QJsonObject settings;
    if (!Configurator::load(settings))
        return {};
    return AlarmFilter::fromJson(settings.value(m_owner).toObject());
}

Nodes::Result AlarmFilterStore::save(const AlarmFilter &filter) const
{
    QJsonObject settings;
    (void)Configurator::load(settings); // a damaged file is set aside, and begun anew
    settings.insert(m_owner, filter.toJson());
    return Configurator::save(settings);
}

} // namespace Widgets
