#include "widgets/scene/editing/ElementClipboard.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLoggingCategory>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(editorLog, "station.editor")

} // namespace

void ElementClipboard::put(const Nodes::NodesCollection &project, const Nodes::NodeLinks &elements)
{
    Nodes::NodesContainer nodes;
    for (const Nodes::NodeLink &link : elements)
        nodes.Add(link);
    if (nodes.empty())
        return;
    const std::string bytes = project.Serialize(nodes);
    QGuiApplication::clipboard()->setText(
        QString::fromLatin1(QByteArray::fromStdString(bytes).toHex()));
}

bool ElementClipboard::read(Nodes::NodesCollection &project, Nodes::NodesContainer &nodes)
{
    const QByteArray text = QGuiApplication::clipboard()->text().toLatin1();
    const QByteArray bytes = QByteArray::fromHex(text);
    // fromHex passes over what is no digit: any text would do.
    if (bytes.isEmpty() || bytes.toHex() != text.toLower())
        return false;
    const Nodes::Result read = project.Deserialize(bytes.toStdString(), nodes);
    if (!read)
        qCDebug(editorLog, "the clipboard has no elements: %s", read.ToString().c_str());
    return read && !nodes.empty();
}

void ElementClipboard::discard(Nodes::NodesCollection &project, const Nodes::NodeLinks &nodes)
{
    for (const Nodes::NodeLink &link : nodes)
        (void)project.TakeClone(link);
}

bool ElementClipboard::hasElements(Nodes::NodesCollection &project)
{
    Nodes::NodesContainer nodes;
    const bool isReadable = read(project, nodes);
    if (isReadable)
        discard(project, nodes.GetLinks());
    return isReadable;
}

Nodes::NodesArray ElementClipboard::take(Nodes::NodesCollection &project)
{
    Nodes::NodesContainer nodes;
    Nodes::NodesArray clones;
    if (!read(project, nodes))
        return clones;
    const Nodes::Result cloned =
        project.CloneNodes(Nodes::NodesArray(nodes.GetLinks()), clones, true);
    discard(project, nodes.GetLinks());
    if (cloned)
        return clones;
    qCWarning(editorLog, "nothing pasted: %s", cloned.ToString().c_str());
    return {};
}

} // namespace Widgets
