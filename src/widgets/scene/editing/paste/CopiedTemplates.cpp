#include "widgets/scene/editing/paste/CopiedTemplates.h"

#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/paste/LinkPaths.h"
#include "widgets/scene/editing/paste/LinkRebinding.h"
#include "widgets/scene/editing/paste/PasteReport.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/templates/TemplateUse.h"

#include <QClipboard>
#include <QDataStream>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

namespace Widgets {

namespace {

const QString format = QStringLiteral("application/x-operatorstation-templates");

struct Copied
{
    QByteArray nodes;  ///< elements and templates
    QByteArray links;  ///< LinkPaths of them
    QStringList paths; ///< of the templates, in the order of `nodes`
};

QStringList templatePaths(const Nodes::NodeLinks &nodes)
{
    QStringList paths;
    for (const Nodes::NodeLink &link : nodes) {
        if (Nodes::TemplateUse::IsTemplate(*link.GetNode()))
            paths << QString::fromStdString(link.GetLinkName(true));
    }
    return paths;
}

/// Bytes that may come from anywhere.
std::optional<Copied> copiedIn(const QMimeData *data)
{
    if (!data || !data->hasFormat(format))
        return std::nullopt;
    QDataStream stream(data->data(format));
    Copied copied;
    stream >> copied.nodes >> copied.links >> copied.paths;
    return stream.status() == QDataStream::Ok ? std::make_optional(copied) : std::nullopt;
}

const Nodes::ConfigNode *templateAt(const Nodes::NodesCollection &project, const QString &path)
{
    const auto found = project.GetNodesByPath(path.toStdString());
    const auto fit = std::find_if(found.begin(), found.end(), [](const Nodes::ConfigNode *node) {
        return Nodes::TemplateUse::IsTemplate(*node);
    });
    return fit == found.end() ? nullptr : *fit;
}

/// Those the project has give way to its own.
CopiedTemplates::Pasted sorted(Nodes::NodesCollection &project, const Nodes::NodesArray &clones,
                               const QStringList &paths, LinkRebinding &rebinding)
{
    CopiedTemplates::Pasted pasted;
    Nodes::IdMap known;
    Nodes::NodeLinks surplus;
    int next = 0;
    for (const Nodes::NodeLink &clone : clones) {
        if (!Nodes::TemplateUse::IsTemplate(*clone.GetNode())) {
            pasted.elements.push_back(clone);
            continue;
        }
        const Nodes::ConfigNode *own = templateAt(project, paths.value(next++));
        if (own) {
            known[clone.GetNodeId()] = own->GetId();
            rebinding.keep(own->GetId());
            surplus.push_back(clone);
        } else {
            pasted.templates.push_back(clone);
        }
    }
    for (const Nodes::NodesArray *nodes : {&pasted.elements, &pasted.templates}) {
        for (const Nodes::NodeLink &node : *nodes)
            Nodes::RemapLinks(*node.GetNode(), known);
    }
    ElementClipboard::discard(project, surplus);
    return pasted;
}

} // namespace

void CopiedTemplates::put(const Nodes::NodesCollection &project, const Nodes::NodeLinks &elements,
                          QMimeData &data)
{
    Nodes::NodesContainer nodes;
    for (const Nodes::NodeLink &element : elements)
        nodes.Add(element);
    bool isAny = false;
    for (const Nodes::NodeLink &element : elements) {
        for (const Nodes::NodeLink &shown : Nodes::TemplateUse::ShownBy(*element.GetNode())) {
            nodes.Add(shown);
            isAny = true;
        }
    }
    if (!isAny)
        return;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << QByteArray::fromStdString(project.Serialize(nodes))
           << LinkPaths(project, nodes.GetLinks()).toBytes() << templatePaths(nodes.GetLinks());
    data.setData(format, bytes);
}

std::optional<CopiedTemplates::Pasted> CopiedTemplates::take(Nodes::NodesCollection &project,
                                                             PasteReport &report)
{
    const std::optional<Copied> copied = copiedIn(QGuiApplication::clipboard()->mimeData());
    const std::optional<LinkPaths> links =
        copied ? LinkPaths::fromBytes(copied->links) : std::nullopt;
    const bool hasAll = copied && std::all_of(copied->paths.begin(), copied->paths.end(),
                                              [&project](const QString &path) {
                                                  return templateAt(project, path) != nullptr;
                                              });
    if (!links || hasAll || links->isFrom(project))
        return std::nullopt;
    project.ReserveIds(links->highestId()); // links name them, what is pasted must not have them
    Nodes::NodesContainer nodes;
    Nodes::NodesArray clones;
    if (!project.Deserialize(copied->nodes.toStdString(), nodes))
        return std::nullopt;
    const bool isCloned(project.CloneNodes(Nodes::NodesArray(nodes.GetLinks()), clones, true));
    ElementClipboard::discard(project, nodes.GetLinks());
    if (!isCloned)
        return std::nullopt;
    LinkRebinding rebinding(project, links);
    Pasted pasted = sorted(project, clones, copied->paths, rebinding);
    Nodes::NodesArray all = pasted.elements;
    for (const Nodes::NodeLink &node : pasted.templates) {
        all.push_back(node);
        report.templates << QString::fromStdString(node.GetLinkName());
    }
    rebinding.rebind(all, report);
    return pasted;
}

} // namespace Widgets
