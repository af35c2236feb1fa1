#include "editor/properties/PropertyDrop.h"

#include "editor/properties/PropertyRow.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "widgets/scene/editing/DraggedNodes.h"

#include <QMimeData>

#include <algorithm>

namespace Editor {

namespace {

const QString pathsFormat = QStringLiteral("application/nodelinkpath");
const QString idsFormat = QStringLiteral("application/nodelink");

Nodes::NodeLinks fitting(const PropertyRow &row, const Nodes::NodeLinks &nodes)
{
    Nodes::NodeLinks fitting;
    for (const Nodes::NodeLink &link : nodes) {
        if (link.isValid() && PropertyDrop::fits(*row.descriptor, *link.GetNode()))
            fitting.push_back(link);
    }
    return fitting;
}

} // namespace

QStringList PropertyDrop::mimeTypes()
{
    return {pathsFormat, idsFormat};
}

// Ids are exact; several nodes may have one path.
Nodes::NodeLinks PropertyDrop::nodes(const QMimeData *mime, const Nodes::NodesCollection *project)
{
    Nodes::NodeLinks found;
    if (!mime || !project)
        return found;
    if (mime->hasFormat(idsFormat)) {
        for (const QString &id : Widgets::DraggedNodes::texts(*mime, idsFormat)) {
            if (const Nodes::ConfigNode *node = project->FindNode(id.toULong()))
                found.emplace_back(node);
        }
        return found;
    }
    for (const QString &path : Widgets::DraggedNodes::texts(*mime, pathsFormat)) {
        const auto nodes = project->GetNodesByPath(path.toStdString());
        if (!nodes.empty())
            found.emplace_back(nodes.front());
    }
    return found;
}

bool PropertyDrop::fits(const Nodes::PropertyDescriptor &d, const Nodes::ConfigNode &node)
{
    const auto &families = d.linkFamilies;
    return families.empty() || std::find(families.begin(), families.end(),
                                         node.GetNodeType().GetFamily()) != families.end();
}

bool PropertyDrop::isTaken(const PropertyRow &row, const Nodes::NodeLinks &nodes)
{
    if (!row.descriptor)
        return false;
    const std::size_t count = fitting(row, nodes).size();
    return (row.descriptor->binding.type == Nodes::PropertyType::Links && count > 0) ||
           (row.descriptor->binding.type == Nodes::PropertyType::Link && count == 1);
}

QString PropertyDrop::merged(const PropertyRow &row, const Nodes::NodeLinks &nodes)
{
    QStringList ids;
    if (row.descriptor->binding.type == Nodes::PropertyType::Links && !row.value.isMixed)
        ids = QString::fromStdString(row.value.text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const Nodes::NodeLink &link : fitting(row, nodes))
        ids << QString::number(link.GetNodeId());
    return ids.join(QLatin1Char(' '));
}

} // namespace Editor
