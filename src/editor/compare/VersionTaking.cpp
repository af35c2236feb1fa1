#include "editor/compare/VersionTaking.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/serial/UnknownNode.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/MoveNodesCommand.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <functional>

namespace Editor {

using Nodes::ConfigNode;
using Nodes::NodeDifference;
using Nodes::NodeLink;
using Nodes::NodeLinks;
using Nodes::PropertyDifference;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Editor::VersionTaking", text);
}

QString pathOf(const ConfigNode &node)
{
    return QString::fromStdString(node.GetPath());
}

NodeLinks linksIn(const Nodes::PropertyDescriptor &d, const ConfigNode &node)
{
    if (d.binding.type == Nodes::PropertyType::Links)
        return *static_cast<const NodeLinks *>(d.binding.data(node));
    return {*static_cast<const NodeLink *>(d.binding.data(node))};
}

boost::any valueOf(const Nodes::PropertyDescriptor &d, const NodeLinks &links)
{
    if (d.binding.type == Nodes::PropertyType::Links)
        return links;
    return links.empty() ? NodeLink() : links.front();
}

} // namespace

VersionTaking::VersionTaking(const Nodes::NodesCollection &other, Nodes::NodesCollection &open)
    : m_other(other),
      m_open(open),
      m_pairs(other, open),
      m_isSameProject(other.GetUuid() == open.GetUuid())
{
}

void VersionTaking::take(const NodeDifference &difference)
{
    const ConfigNode *theirs = m_other.FindNode(difference.before);
    const ConfigNode *ours = m_open.FindNode(difference.after);
    if (m_count++ == 0)
        m_name = QString::fromStdString((ours ? ours : theirs)->GetName());
    if (difference.isRemoved)
        m_missing.push_back(theirs);
    else if (difference.isAdded)
        m_surplus.emplace_back(ours);
    if (difference.isRemoved || difference.isMoved || difference.isReordered)
        m_placed.insert(theirs);
    for (const PropertyDifference &property : difference.properties)
        m_properties.emplace_back(difference, property);
}

void VersionTaking::take(const NodeDifference &difference, const PropertyDifference &property)
{
    if (m_count++ == 0)
        m_name = QString::fromStdString(m_open.FindNode(difference.after)->GetName());
    m_properties.emplace_back(difference, property);
}

QUndoCommand *VersionTaking::make()
{
    auto step = std::make_unique<Utils::CommandGroup>(
        m_count == 1 ? tr("Взято из другой версии: %1").arg(m_name)
                     : tr("Взято из другой версии: %1 отличий").arg(m_count));
    copyMissing();
    relinkCopies();
    placeNodes(*step);
    for (const auto &[difference, property] : m_properties)
        setProperty(difference, property, *step);
    removeSurplus(*step);
    return step->childCount() > 0 ? step.release() : nullptr;
}

void VersionTaking::copyMissing()
{
    m_open.ReserveIds(m_other.GetLastId()); // a fresh number must not be that of another node there
    for (const ConfigNode *theirs : m_missing) {
        std::unique_ptr<ConfigNode> copy = copyOf(*theirs);
        if (copy && m_open.HoldClone(copy, false))
            continue;
        m_placed.erase(theirs);
        m_remarks << tr("«%1» не взят: этот вид узлов программа не знает.").arg(pathOf(*theirs));
    }
}

// A node of this project that comes back has the number that records and other versions know it by.
// What the open project has elsewhere stays there; it has moved, which is another difference.
std::unique_ptr<ConfigNode> VersionTaking::copyOf(const ConfigNode &theirs)
{
    const Nodes::KindInfo *kind = Nodes::KindTable::Instance().Find(theirs.GetNodeType());
    if (!kind)
        return nullptr;
    const bool isFree = m_isSameProject && !m_open.FindNode(theirs.GetId());
    std::unique_ptr<ConfigNode> copy = m_open.CreateDetached(*kind, isFree ? theirs.GetId() : 0);
    copy->SetName(theirs.GetName());
    copy->SetDescription(theirs.GetDescription());
    for (const Nodes::PropertyDescriptor &d : kind->properties) {
        noteFile(d, theirs);
        if (!Nodes::IsLinkProperty(d))
            (void)copy->SetProperty(d.valueId, d.binding.get(theirs));
    }
    for (const auto &[key, value] : theirs.GetForeignAttributes())
        copy->AddForeignAttribute(key, value);
    if (const auto *unknown = dynamic_cast<const Nodes::UnknownNode *>(&theirs))
        static_cast<Nodes::UnknownNode &>(*copy).SetXml(unknown->GetXml());
    m_copies.emplace(&theirs, NodeLink(copy.get()));
    for (const auto &child : theirs.Children()) {
        if (m_pairs.GetAfter(*child))
            continue;
        if (std::unique_ptr<ConfigNode> below = copyOf(*child))
            (void)copy->AdoptNode(below);
    }
    return copy;
}

void VersionTaking::relinkCopies()
{
    for (const auto &[theirs, copy] : m_copies) {
        for (const Nodes::PropertyDescriptor &d : theirs->GetKind()->properties) {
            if (Nodes::IsLinkProperty(d))
                (void)copy->SetProperty(
                    d.valueId, valueOf(d, linksOf(linksIn(d, *theirs), *theirs, d.nameRu)));
        }
    }
}

// Files are not taken: they are no part of the history, and others of that name may lie here.
void VersionTaking::noteFile(const Nodes::PropertyDescriptor &d, const ConfigNode &theirs)
{
    if (d.binding.type != Nodes::PropertyType::Resource || m_open.GetDirectory().empty())
        return;
    const auto &file = *static_cast<const Nodes::ResourceLink *>(d.binding.data(theirs));
    const QString name = QString::fromStdString(file.GetFilePath());
    const QDir here(QString::fromStdString(m_open.GetDirectory()));
    if (!name.isEmpty() && !file.IsBuiltIn() && !here.exists(name))
        m_remarks << tr("«%1»: файла «%2» в открытом проекте нет, добавьте его.")
                         .arg(pathOf(theirs), name);
}

NodeLink VersionTaking::counterpart(const ConfigNode *theirs) const
{
    const auto copy = m_copies.find(theirs);
    if (copy != m_copies.end())
        return copy->second;
    return NodeLink(theirs ? m_pairs.GetAfter(*theirs) : nullptr);
}

NodeLinks VersionTaking::linksOf(const NodeLinks &links, const ConfigNode &theirs,
                                 const std::string &property)
{
    NodeLinks found;
    for (const NodeLink &link : links) {
        if (link.isEmpty())
            continue;
        const ConfigNode *target = m_other.FindNode(link.GetNodeId());
        const NodeLink here = counterpart(target);
        if (here.isEmpty())
            m_remarks << tr("«%1», «%2»: ссылка на «%3» не взята, в открытом проекте этого узла "
                            "нет.")
                             .arg(pathOf(theirs), QString::fromStdString(property),
                                  target ? pathOf(*target) : QString::number(link.GetNodeId()));
        else
            found.push_back(here);
    }
    return found;
}

// Parents first; siblings in their order, each before the next one that stays where it is.
void VersionTaking::placeNodes(Utils::CommandGroup &step)
{
    std::vector<Place> places;
    int order = 0;
    const std::function<void(const ConfigNode &, int)> walk = [&](const ConfigNode &node,
                                                                  int depth) {
        ++order;
        if (m_placed.count(&node) != 0)
            places.push_back({&node, depth, order});
        for (const auto &child : node.Children())
            walk(*child, depth + 1);
    };
    walk(*m_other.GetRoot(), 0);
    std::sort(places.begin(), places.end(), [](const Place &left, const Place &right) {
        return std::pair(left.depth, left.order) < std::pair(right.depth, right.order);
    });
    for (const Place &place : places)
        placeNode(*place.theirs, step);
}

void VersionTaking::placeNode(const ConfigNode &theirs, Utils::CommandGroup &step)
{
    const NodeLink node = counterpart(&theirs);
    const NodeLink parent = counterpart(theirs.GetParent());
    if (parent.isEmpty()) {
        m_remarks << tr("«%1» не взят: в открытом проекте нет узла, в котором он стоит.")
                         .arg(pathOf(theirs));
        return;
    }
    if (m_copies.count(&theirs) != 0)
        new Utils::AddNodeLinkCommand(node, parent, &step);
    new Utils::MoveNodesCommand({node}, parent, nextOf(theirs, parent), &step);
}

NodeLink VersionTaking::nextOf(const ConfigNode &theirs, const NodeLink &parent) const
{
    const ConfigNode *above = theirs.GetParent();
    for (int i = above->IndexOf(&theirs) + 1; i < above->GetNodeCount(); ++i) {
        const ConfigNode *sibling = above->GetNodeAt(i);
        const NodeLink here = counterpart(sibling);
        if (m_placed.count(sibling) == 0 && !here.isEmpty() &&
            here->GetParent() == parent.GetNode())
            return here;
    }
    return {};
}

void VersionTaking::setProperty(const NodeDifference &difference,
                                const PropertyDifference &property, Utils::CommandGroup &step)
{
    const ConfigNode *theirs = m_other.FindNode(difference.before);
    const NodeLink ours(m_open.FindNode(difference.after));
    using Text = Utils::ChangeTextCommand;
    if (property.what == PropertyDifference::Name)
        new Text(ours, Text::Name, theirs->GetName(), &step);
    else if (property.what == PropertyDifference::Description)
        new Text(ours, Text::Description, theirs->GetDescription(), &step);
    const Nodes::PropertyDescriptor *d = property.what == PropertyDifference::Value
                                             ? theirs->GetKind()->FindProperty(property.valueId)
                                             : nullptr;
    if (d)
        noteFile(*d, *theirs);
    if (d)
        new Utils::ChangePropertyCommand(
            ours, d->valueId,
            Nodes::IsLinkProperty(*d)
                ? valueOf(*d, linksOf(linksIn(*d, *theirs), *theirs, d->nameRu))
                : d->binding.get(*theirs),
            &step);
    if (property.what == PropertyDifference::Foreign)
        m_remarks << tr("«%1»: %2 не взят, программа его не знает.")
                         .arg(pathOf(*theirs), QString::fromStdString(property.name));
}

void VersionTaking::removeSurplus(Utils::CommandGroup &step)
{
    for (const NodeLink &node : m_surplus) {
        if (holdsOthers(*node.GetNode()))
            m_remarks << tr("«%1» не удалён: в него перемещены узлы, которые есть и в другой "
                            "версии. Возьмите сначала их место.")
                             .arg(pathOf(*node.GetNode()));
        else
            new Utils::RemoveNodeLinkGroup(NodeLink(node->GetParent()), {node}, &step);
    }
}

bool VersionTaking::holdsOthers(const ConfigNode &surplus) const
{
    return std::any_of(surplus.Children().begin(), surplus.Children().end(),
                       [this](const auto &child) {
                           const ConfigNode *theirs = m_pairs.GetBefore(*child);
                           return (theirs && m_placed.count(theirs) == 0) || holdsOthers(*child);
                       });
}

} // namespace Editor
