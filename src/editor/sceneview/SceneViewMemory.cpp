#include "editor/sceneview/SceneViewMemory.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "utils/settings/Configurator.h"

#include <QDateTime>
#include <QJsonObject>

namespace Editor {

namespace {

const QString percentKey = QStringLiteral("percent");
const QString xKey = QStringLiteral("x");
const QString yKey = QStringLiteral("y");
const QString timeKey = QStringLiteral("seen");

QString keyOf(const Nodes::ConfigNode &scene)
{
    const Nodes::NodesCollection *project = scene.GetNodesCollection();
    return QString::fromStdString(project ? project->GetUuid() : std::string()) + QLatin1Char('/') +
           QString::number(scene.GetId());
}

void dropOldest(QJsonObject &kept)
{
    auto oldest = kept.begin();
    for (auto item = kept.begin(); item != kept.end(); ++item) {
        if (item->toObject().value(timeKey).toDouble() <
            oldest->toObject().value(timeKey).toDouble())
            oldest = item;
    }
    kept.erase(oldest);
}

Utils::Configurator settings(const QString &fileName)
{
    return {QStringLiteral("scenes"), fileName};
}

} // namespace

SceneViewMemory::SceneViewMemory(QString fileName) : m_fileName(std::move(fileName)) {}

std::optional<SceneViewMemory::Place> SceneViewMemory::recall(const Nodes::ConfigNode &scene) const
{
    QJsonObject kept;
    if (!settings(m_fileName).load(kept)) // a warning is in the log already
        return std::nullopt;
    const QJsonObject place = kept.value(keyOf(scene)).toObject();
    const int percent = place.value(percentKey).toInt();
    if (percent < 0 || !place.contains(percentKey))
        return std::nullopt;
    return Place{percent, {place.value(xKey).toDouble(), place.value(yKey).toDouble()}};
}

void SceneViewMemory::keep(const Nodes::ConfigNode &scene, const Place &place) const
{
    QJsonObject kept;
    if (!settings(m_fileName).load(kept))
        return;
    kept[keyOf(scene)] = QJsonObject{{percentKey, place.percent},
                                     {xKey, place.centre.x()},
                                     {yKey, place.centre.y()},
                                     {timeKey, double(QDateTime::currentMSecsSinceEpoch())}};
    while (kept.size() > KeptAtMost)
        dropOldest(kept);
    (void)settings(m_fileName).save(kept); // a failure is in the log
}

} // namespace Editor
