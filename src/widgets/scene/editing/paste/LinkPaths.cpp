#include "widgets/scene/editing/paste/LinkPaths.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

namespace Widgets {

namespace {

const QString sourceKey = QStringLiteral("source");
const QString linksKey = QStringLiteral("links");
const QString pathKey = QStringLiteral("path");
const QString kindKey = QStringLiteral("kind");

// A project opened again, or a copy of it in another process, may have changed in between.
QString sourceOf(const Nodes::NodesCollection &project)
{
    static const QString process = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return process + QLatin1Char('/') + QString::number(project.GetToken());
}

QString textOf(const std::string &text)
{
    return QString::fromStdString(text);
}

} // namespace

LinkPaths::LinkPaths(const Nodes::NodesCollection &project, const Nodes::NodeLinks &copied)
    : m_source(sourceOf(project))
{
    Nodes::NodeLinks all;
    for (const Nodes::NodeLink &link : copied) {
        const Nodes::ConfigNode *node = link.GetNode();
        if (!node)
            continue;
        const Nodes::NodeLinks below = node->GetNodes(true);
        all.push_back(link);
        all.insert(all.end(), below.begin(), below.end());
    }
    Nodes::IdSet own;
    for (const Nodes::NodeLink &link : all)
        own.insert(link.GetNodeId());
    for (const Nodes::NodeLink &link : all) {
        const Nodes::ConfigNode &node = *link.GetNode();
        Nodes::VisitLinks(node, *node.GetKind(),
                          [&](const Nodes::PropertyDescriptor &, const Nodes::NodeLink &to) {
                              if (own.count(to.GetNodeId()) != 0)
                                  return;
                              const Nodes::ConfigNode *target = to.GetNode();
                              m_targets[to.GetNodeId()] =
                                  target ? Target{target->GetPath(), target->GetKind()->key}
                                         : Target();
                          });
    }
}

QByteArray LinkPaths::toBytes() const
{
    QJsonObject links;
    for (const auto &[id, target] : m_targets)
        links[QString::number(id)] =
            QJsonObject{{pathKey, textOf(target.path)}, {kindKey, textOf(target.kind)}};
    return QJsonDocument(QJsonObject{{sourceKey, m_source}, {linksKey, links}})
        .toJson(QJsonDocument::Compact);
}

std::optional<LinkPaths> LinkPaths::fromBytes(const QByteArray &bytes)
{
    const QJsonObject object = QJsonDocument::fromJson(bytes).object();
    if (!object.value(sourceKey).isString() || !object.value(linksKey).isObject())
        return std::nullopt;
    LinkPaths paths;
    paths.m_source = object.value(sourceKey).toString();
    const QJsonObject links = object.value(linksKey).toObject();
    for (auto link = links.begin(); link != links.end(); ++link) {
        bool isNumber = false;
        const unsigned long id = link.key().toULong(&isNumber);
        const QJsonObject target = link.value().toObject();
        if (!isNumber || id == 0)
            return std::nullopt;
        paths.m_targets[id] = {target.value(pathKey).toString().toStdString(),
                               target.value(kindKey).toString().toStdString()};
    }
    return paths;
}

bool LinkPaths::isFrom(const Nodes::NodesCollection &project) const
{
    return m_source == sourceOf(project);
}

const LinkPaths::Target *LinkPaths::find(unsigned long id) const
{
    const auto found = m_targets.find(id);
    return found == m_targets.end() ? nullptr : &found->second;
}

unsigned long LinkPaths::highestId() const
{
    return m_targets.empty() ? 0 : m_targets.rbegin()->first;
}

} // namespace Widgets
