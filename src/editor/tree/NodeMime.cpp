#include "editor/tree/NodeMime.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QMimeData>

namespace Editor {

namespace {

const QString pathFormat = QStringLiteral("application/nodelinkpath");
const QString idFormat = QStringLiteral("application/nodelink");
const QString ownFormat = QStringLiteral("application/x-operatorstation-tree");

QByteArray bytesOf(const QStringList &texts)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const QString &text : texts)
        stream << text; // one after the other, not as a list: readers go on to the end
    return bytes;
}

/// Whether the first node of that path is the node itself.
bool isFoundByPath(const Nodes::ConfigNode &node, const Nodes::NodesCollection &project)
{
    const std::vector<Nodes::ConfigNode *> found = project.GetNodesByPath(node.GetPath());
    return !found.empty() && found.front() == &node;
}

} // namespace

QStringList NodeMime::formats()
{
    return {pathFormat, idFormat, ownFormat};
}

QMimeData *NodeMime::make(const Nodes::NodesCollection &project, const Nodes::NodeLinks &nodes)
{
    QStringList paths;
    QStringList ids;
    bool isEachFound = true;
    for (const Nodes::NodeLink &link : nodes) {
        const Nodes::ConfigNode *node = link.GetNode();
        if (!node)
            continue;
        paths.append(QString::fromStdString(node->GetPath()));
        ids.append(QString::number(node->GetId()));
        isEachFound = isEachFound && isFoundByPath(*node, project);
    }
    if (ids.isEmpty())
        return nullptr;
    auto *data = new QMimeData;
    if (isEachFound)
        data->setData(pathFormat, bytesOf(paths));
    data->setData(idFormat, bytesOf(ids));
    QByteArray own;
    QDataStream stream(&own, QIODevice::WriteOnly);
    stream << qint64(QCoreApplication::applicationPid()) << quint64(project.GetToken());
    data->setData(ownFormat, own + bytesOf(ids));
    return data;
}

Nodes::NodeLinks NodeMime::own(const QMimeData &data, const Nodes::NodesCollection &project)
{
    const QByteArray bytes = data.data(ownFormat);
    QDataStream stream(bytes);
    qint64 process = 0;
    quint64 token = 0;
    stream >> process >> token;
    Nodes::NodeLinks nodes;
    if (process != QCoreApplication::applicationPid() || token != project.GetToken())
        return nodes;
    // One by one: a list would make room for as many as damaged bytes say.
    while (!stream.atEnd()) {
        QString id;
        stream >> id;
        if (stream.status() != QDataStream::Ok)
            return {};
        if (const Nodes::ConfigNode *node = project.FindNode(id.toULong()))
            nodes.emplace_back(node);
    }
    return nodes;
}

} // namespace Editor
