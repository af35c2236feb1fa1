#include "utils/undo/HeldNodes.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QLoggingCategory>

#include <algorithm>

namespace Utils {

namespace {

Q_LOGGING_CATEGORY(undoLog, "station.undo")

constexpr int firstOfCopies = 2; // the second of its name

std::string nodeText(const Nodes::NodeLink &link)
{
    return "node " + std::to_string(link.GetNodeId());
}

} // namespace

HeldNodes::HeldNodes() = default;
HeldNodes::~HeldNodes() = default;

void HeldNodes::add(const Nodes::NodeLink &node, const Nodes::NodeLink &parent)
{
    Place place;
    place.node = node;
    place.parent = parent;
    m_places.push_back(std::move(place));
}

bool HeldNodes::isHolding() const
{
    return std::any_of(m_places.begin(), m_places.end(),
                       [](const Place &place) { return place.held != nullptr; });
}

Nodes::Result HeldNodes::locate(Place &place)
{
    const Nodes::ConfigNode *node = place.node.GetNode();
    const Nodes::ConfigNode *parent = node ? node->GetParent() : nullptr;
    const int index = parent ? parent->IndexOf(node) : -1;
    if (index < 0)
        return Nodes::Result(Nodes::Result::NotFound, nodeText(place.node) + " in the tree");
    place.parent = Nodes::NodeLink(parent);
    place.index = index;
    return Nodes::Result();
}

Nodes::Result HeldNodes::remove()
{
    Nodes::NodesArray nodes;
    for (Place &place : m_places) {
        const Nodes::Result located = locate(place);
        if (!located)
            return located;
        nodes.push_back(place.node);
    }
    // Ascending, so that each node finds its old index when they come back in this order; they go
    // in the opposite one, so that few have to move up.
    std::stable_sort(m_places.begin(), m_places.end(),
                     [](const Place &l, const Place &r) { return l.index < r.index; });
    m_links.Cut(nodes);
    for (auto place = m_places.rbegin(); place != m_places.rend(); ++place)
        place->held = place->parent->RemoveNode(place->node);
    return Nodes::Result();
}

// Named here, for all of them at once, and not one by one as they are added.
void HeldNodes::takeClone(Place &place, const Nodes::ConfigNode &parent)
{
    Nodes::NodesCollection &project = *parent.GetNodesCollection();
    place.held = project.TakeClone(place.node);
    place.isClone = place.held != nullptr;
    if (!place.held || !project.takeRenameMark(place.held->GetId()))
        return;
    Nodes::FreeNames &names = m_names.try_emplace(&parent, parent, firstOfCopies).first->second;
    place.held->SetName(names.take(place.held->GetName()));
}

Nodes::Result HeldNodes::insertOne(Place &place, bool &isInserted)
{
    Nodes::ConfigNode *parent = place.parent.GetNode();
    if (!parent)
        return Nodes::Result(Nodes::Result::NotFound, "parent " + nodeText(place.parent));
    const Nodes::ConfigNode *present = place.node.GetNode();
    if (present && parent->IndexOf(present) >= 0)
        return Nodes::Result();
    if (!place.held)
        takeClone(place, *parent);
    if (!place.held)
        return Nodes::Result(present, Nodes::Result::NotFound,
                             nodeText(place.node) + " outside of the tree");
    // What has stood here before comes back even where its kind could not be created now.
    const Nodes::Result added = place.isClone ? parent->AddNode(place.held, place.index)
                                              : parent->AdoptNode(place.held, place.index);
    isInserted = added.IsSuccess();
    return added;
}

void HeldNodes::giveBack(Place &place)
{
    if (!place.isClone || !place.held)
        return;
    if (Nodes::NodesCollection *project = place.held->GetNodesCollection())
        (void)project->HoldClone(place.held, false); // its id was free a moment ago
}

Nodes::Result HeldNodes::insertAll()
{
    std::vector<Place *> inserted;
    for (Place &place : m_places) {
        bool isInserted = false;
        const Nodes::Result result = insertOne(place, isInserted);
        if (isInserted)
            inserted.push_back(&place);
        if (result)
            continue;
        for (auto done = inserted.rbegin(); done != inserted.rend(); ++done)
            (*done)->held = (*done)->parent->RemoveNode((*done)->node);
        return result;
    }
    return Nodes::Result();
}

Nodes::Result HeldNodes::insert()
{
    const Nodes::Result result = insertAll();
    m_names.clear();
    for (Place &place : m_places) {
        giveBack(place);
        place.isClone = false;
    }
    if (!result)
        return result;
    const Nodes::Result restored = m_links.Restore();
    if (!restored)
        qCWarning(undoLog, "a link to a restored node is lost: %s", restored.ToString().c_str());
    return result;
}

} // namespace Utils
