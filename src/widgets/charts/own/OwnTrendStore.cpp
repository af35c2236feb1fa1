#include "widgets/charts/own/OwnTrendStore.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <QDir>
#include <QJsonArray>

namespace Widgets {

namespace {

QString fileOf(const Nodes::systemCore &model)
{
    return QDir(QString::fromStdString(model.GetDataDirectory()))
        .filePath(QStringLiteral("config.json"));
}

} // namespace

OwnTrendStore::OwnTrendStore(const Nodes::systemCore &model)
    : Configurator(QStringLiteral("OwnTrends"), fileOf(model)), m_model(model)
{
    const Nodes::systemAuthentication *users = model.GetSystemAuthentication();
    const unsigned long user = users ? users->GetCurrentUser().GetNodeId() : 0;
    const Nodes::NodesCollection *project = model.GetNodesCollection();
    m_owner = QStringLiteral("%1/%2")
                  .arg(project ? QString::fromStdString(project->GetUuid()) : QString())
                  .arg(user);
}

Nodes::NodeLinks OwnTrendStore::load() const
{
    Nodes::NodeLinks kept;
    QJsonObject settings;
    const Nodes::NodesCollection *project = m_model.GetNodesCollection();
    if (!project || !Configurator::load(settings)) // what was wrong is in the log
        return kept;
    const QJsonArray ids = settings.value(m_owner).toArray();
    for (const QJsonValue &id : ids) {
        // A number of JSON holds 53 bits, as many as fresh ids have.
        Nodes::ConfigNode *node = project->FindNode(static_cast<unsigned long>(id.toDouble()));
        if (auto *signal = dynamic_cast<Nodes::BasicSignal *>(node))
            kept.push_back(signal->GetNodeLink());
    }
    return kept;
}

Nodes::Result OwnTrendStore::save(const Nodes::NodeLinks &shown) const
{
    QJsonObject settings;
    (void)Configurator::load(settings); // a damaged file is set aside, and begun anew
    QJsonArray ids;
    for (const Nodes::NodeLink &signal : shown)
        ids.append(double(signal.GetNodeId()));
    settings.insert(m_owner, ids);
    return Configurator::save(settings);
}

} // namespace Widgets
