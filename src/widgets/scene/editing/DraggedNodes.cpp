#include "widgets/scene/editing/DraggedNodes.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QDataStream>
#include <QMimeData>

namespace Widgets {

namespace {

const QString pathsFormat = QStringLiteral("application/nodelinkpath");
const QString idsFormat = QStringLiteral("application/nodelink");

} // namespace

QStringList DraggedNodes::texts(const QMimeData &mime, const QString &format)
{
    QStringList found;
    const QByteArray bytes = mime.data(format);
    QDataStream stream(bytes);
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        QString text;
        stream >> text;
        if (stream.status() == QDataStream::Ok)
            found << text;
    }
    return found;
}

bool DraggedNodes::isIn(const QMimeData &mime)
{
    return mime.hasFormat(pathsFormat) || mime.hasFormat(idsFormat);
}

Nodes::NodesArray DraggedNodes::read(const Nodes::NodesCollection &project, const QMimeData &mime)
{
    Nodes::NodesArray found;
    if (mime.hasFormat(pathsFormat)) {
        for (const QString &path : texts(mime, pathsFormat)) {
            const auto nodes = project.GetNodesByPath(path.toStdString());
            if (!nodes.empty())
                found.push_back(Nodes::NodeLink(nodes.front()));
        }
        return found;
    }
    for (const QString &id : texts(mime, idsFormat)) {
        if (const Nodes::ConfigNode *node = project.FindNode(id.toULong()))
            found.push_back(Nodes::NodeLink(node));
    }
    return found;
}

} // namespace Widgets
