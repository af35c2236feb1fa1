#include "widgets/scene/editing/ElementClipboard.h"

#include "widgets/scene/editing/groups/GroupEdits.h"
#include "widgets/scene/editing/paste/CopiedTemplates.h"
#include "widgets/scene/editing/paste/LinkPaths.h"
#include "widgets/scene/editing/paste/LinkRebinding.h"
#include "widgets/scene/editing/paste/PasteReport.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/model/links/LinkWalk.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QMimeData>

#include <algorithm>
#include <memory>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(editorLog, "station.editor")

const QString enteredFormat = QStringLiteral("application/x-operatorstation-group");
const QString layersFormat = QStringLiteral("application/x-operatorstation-layers");

/// Ids of the parents, in the order of the nodes.
QByteArray layersOf(const Nodes::NodeLinks &nodes)
{
    QByteArrayList ids;
    for (const Nodes::NodeLink &node : nodes) {
        const Nodes::ConfigNode *layer = node->GetParent();
        ids << QByteArray::number(qulonglong(layer ? layer->GetId() : 0));
    }
    return ids.join(' ');
}

std::optional<LinkPaths> readPaths()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(LinkPaths::mimeFormat())
               ? LinkPaths::fromBytes(data->data(LinkPaths::mimeFormat()))
               : std::nullopt;
}

/// Highest id that the links of the nodes name.
unsigned long highestLink(const Nodes::NodeLinks &nodes)
{
    unsigned long highest = 0;
    const auto visit = [&highest](const Nodes::PropertyDescriptor &, const Nodes::NodeLink &link) {
        highest = std::max(highest, link.GetNodeId());
    };
    for (const Nodes::NodeLink &root : nodes) {
        Nodes::VisitLinks(*root.GetNode(), *root->GetKind(), visit);
        for (const Nodes::NodeLink &link : root->GetNodes(true))
            Nodes::VisitLinks(*link.GetNode(), *link->GetKind(), visit);
    }
    return highest;
}

QString failureText(const Nodes::Result &read)
{
    return read == Nodes::Result::LimitExceeded
               ? QStringLiteral("Не вставлено: в буфере обмена слишком много элементов")
               : QStringLiteral("Не вставлено: в буфере обмена нет элементов этой программы или "
                                "они повреждены");
}

} // namespace

std::string ElementClipboard::enteredGroup()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data ? data->data(enteredFormat).toStdString() : std::string();
}

std::vector<unsigned long> ElementClipboard::sourceLayers()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    const QByteArray text = data ? data->data(layersFormat) : QByteArray();
    std::vector<unsigned long> ids;
    for (const QByteArray &id : text.isEmpty() ? QByteArrayList() : text.split(' '))
        ids.push_back(id.toULong());
    return ids;
}

void ElementClipboard::put(const Nodes::NodesCollection &project, const Nodes::NodeLinks &elements,
                           const std::string &entered)
{
    Nodes::NodesContainer nodes;
    for (const Nodes::NodeLink &link : elements)
        nodes.Add(link);
    if (nodes.empty())
        return;
    const std::string bytes = project.Serialize(nodes);
    auto data = std::make_unique<QMimeData>();
    data->setText(QString::fromLatin1(QByteArray::fromStdString(bytes).toHex()));
    data->setData(LinkPaths::mimeFormat(), LinkPaths(project, nodes.GetLinks()).toBytes());
    data->setData(layersFormat, layersOf(nodes.GetLinks()));
    CopiedTemplates::put(project, nodes.GetLinks(), *data);
    if (!entered.empty())
        data->setData(enteredFormat, QByteArray::fromStdString(entered));
    QGuiApplication::clipboard()->setMimeData(data.release());
}

Nodes::Result ElementClipboard::read(Nodes::NodesCollection &project, Nodes::NodesContainer &nodes)
{
    // A text that went through another program may have got a line end.
    const QByteArray text = QGuiApplication::clipboard()->text().trimmed().toLatin1();
    const QByteArray bytes = QByteArray::fromHex(text);
    // fromHex passes over what is no digit: any text would do.
    if (bytes.isEmpty() || bytes.toHex() != text.toLower())
        return Nodes::Result(Nodes::Result::ParseError, "no hexadecimal text");
    const Nodes::Result read = project.Deserialize(bytes.toStdString(), nodes);
    if (!read)
        qCDebug(editorLog, "the clipboard has no elements: %s", read.ToString().c_str());
    return read && nodes.empty() ? Nodes::Result(Nodes::Result::ParseError, "no element") : read;
}

void ElementClipboard::discard(Nodes::NodesCollection &project, const Nodes::NodeLinks &nodes)
{
    for (const Nodes::NodeLink &link : nodes)
        (void)project.TakeClone(link);
}

bool ElementClipboard::hasElements(Nodes::NodesCollection &project)
{
    Nodes::NodesContainer nodes;
    const bool isReadable(read(project, nodes));
    discard(project, nodes.GetLinks());
    return isReadable;
}

// The ids that links name must not be given to what is pasted.
Nodes::NodesArray ElementClipboard::take(Nodes::NodesCollection &project, PasteReport &report)
{
    const std::optional<LinkPaths> paths = readPaths();
    Nodes::NodesContainer nodes;
    Nodes::NodesArray clones;
    if (paths)
        project.ReserveIds(paths->highestId());
    Nodes::Result taken = read(project, nodes);
    const unsigned long highest = taken && !paths ? highestLink(nodes.GetLinks()) : 0;
    if (highest > 0) {
        discard(project, nodes.GetLinks());
        nodes = {};
        project.ReserveIds(highest);
        taken = read(project, nodes);
    }
    if (!taken) {
        report.failure = failureText(taken);
        return clones;
    }
    report.skipped = QString::fromStdString(taken.GetDetail());
    if (!report.skipped.isEmpty())
        qCWarning(editorLog, "pasted, %s", qUtf8Printable(report.skipped));
    taken = project.CloneNodes(Nodes::NodesArray(nodes.GetLinks()), clones, true);
    discard(project, nodes.GetLinks());
    if (!taken) {
        qCWarning(editorLog, "nothing pasted: %s", taken.ToString().c_str());
        report.failure = failureText(taken);
        return {};
    }
    GroupEdits::tellApart(clones, sourceLayers());
    LinkRebinding(project, paths).rebind(clones, report);
    return clones;
}

Nodes::NodesArray ElementClipboard::take(Nodes::NodesCollection &project)
{
    PasteReport report;
    return take(project, report);
}

} // namespace Widgets
