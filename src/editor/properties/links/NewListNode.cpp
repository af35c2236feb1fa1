#include "editor/properties/links/NewListNode.h"

#include "editor/properties/NewNode.h"
#include "editor/properties/PropertyModel.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

#include <algorithm>
#include <memory>

namespace Editor {

namespace {

using Nodes::ConfigNode;

ConfigNode *placeFor(const PropertyModel &model, const QStringList &ids,
                     const Nodes::KindInfo &kind)
{
    for (const QString &id : ids) {
        const ConfigNode *sibling = model.project()->FindNode(id.toULong());
        ConfigNode *parent = sibling ? sibling->GetParent() : nullptr;
        if (parent && parent->GetKind()->AllowsChild(kind.type))
            return parent;
    }
    ConfigNode *place = model.nodes()[0].GetNode();
    while (place && !place->GetKind()->AllowsChild(kind.type))
        place = place->GetParent();
    return place;
}

} // namespace

std::vector<const Nodes::KindInfo *> listKinds(const Nodes::PropertyDescriptor &d)
{
    std::vector<const Nodes::KindInfo *> kinds;
    for (const Nodes::KindInfo &kind : Nodes::KindTable::Instance().GetKinds()) {
        const unsigned family = kind.type.GetFamily();
        const bool isAction =
            family == Nodes::NodeType::TypeAction || family == Nodes::NodeType::TypeArchiverAction;
        if (isAction &&
            std::find(d.linkFamilies.begin(), d.linkFamilies.end(), family) != d.linkFamilies.end())
            kinds.push_back(&kind);
    }
    return kinds;
}

QString addListNode(PropertyModel &model, const Nodes::PropertyDescriptor &d,
                    const QStringList &ids, const Nodes::KindInfo &kind)
{
    if (!model.edits().readOnly().isEmpty())
        return model.edits().readOnly();
    ConfigNode *place =
        model.nodes().empty() || !model.project() ? nullptr : placeFor(model, ids, kind);
    if (!place)
        return QStringLiteral("В проекте нет места для узла «%1». Создайте для него папку.")
            .arg(QString::fromStdString(kind.nameRu));
    const Nodes::NodeLink made = makeClone(kind.type, *place);
    Nodes::NodeLinks links;
    for (const QString &id : ids)
        links.emplace_back(id.toULong(), model.project());
    links.push_back(made);
    auto group = std::make_unique<Utils::CommandGroup>(
        QStringLiteral("Создание узла %1").arg(QString::fromStdString(made.GetLinkName())));
    new Utils::AddNodeLinkCommand(made, Nodes::NodeLink(place), group.get());
    for (const Nodes::NodeLink &node : model.nodes())
        new Utils::ChangePropertyCommand(node, d.valueId, links, group.get());
    return model.edits().push(group.release());
}

} // namespace Editor
