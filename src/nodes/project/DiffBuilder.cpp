#include "nodes/project/DiffBuilder.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/ValueWords.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace Nodes {

namespace {

NodeDifference begin(const ConfigNode &shown)
{
    NodeDifference difference;
    difference.path = shown.GetPath();
    difference.kind = shown.GetKind()->nameRu;
    return difference;
}

/// Which of the places stay when as few as possible are moved to sort them: the longest rising run.
std::vector<bool> staying(const std::vector<int> &places)
{
    std::vector<std::size_t> ends; // by length of the run, where the lowest such run ends
    std::vector<std::size_t> previous(places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto at = std::lower_bound(ends.begin(), ends.end(), places[i],
                                         [&](std::size_t e, int p) { return places[e] < p; });
        previous[i] = at == ends.begin() ? places.size() : *(at - 1);
        if (at == ends.end())
            ends.push_back(i);
        else
            *at = i;
    }
    std::vector<bool> stays(places.size(), false);
    for (std::size_t i = ends.empty() ? places.size() : ends.back(); i < places.size();
         i = previous[i])
        stays[i] = true;
    return stays;
}

} // namespace

DiffBuilder::DiffBuilder(const NodesCollection &before, const NodesCollection &after)
    : m_before(before), m_after(after), m_pairs(before, after)
{
}

std::vector<NodeDifference> DiffBuilder::Build()
{
    if (m_after.GetRoot())
        walkAfter(*m_after.GetRoot());
    if (m_before.GetRoot())
        walkBefore(*m_before.GetRoot());
    return std::move(m_found);
}

void DiffBuilder::walkAfter(const ConfigNode &after)
{
    if (const ConfigNode *before = m_pairs.GetBefore(after)) {
        noteOrder(*before, after);
        compare(*before, after);
    } else if (!after.GetParent() || m_pairs.GetBefore(*after.GetParent())) {
        NodeDifference added = begin(after);
        added.isAdded = true;
        added.after = after.GetId();
        added.below = countAdded(after) - 1;
        m_found.push_back(std::move(added));
    }
    for (const auto &child : after.Children())
        walkAfter(*child);
}

void DiffBuilder::walkBefore(const ConfigNode &before)
{
    const bool isTop = !before.GetParent() || m_pairs.GetAfter(*before.GetParent());
    if (!m_pairs.GetAfter(before) && isTop) {
        NodeDifference removed = begin(before);
        removed.isRemoved = true;
        removed.before = before.GetId();
        removed.below = countRemoved(before) - 1;
        m_found.push_back(std::move(removed));
    }
    for (const auto &child : before.Children())
        walkBefore(*child);
}

// Without a walk for each node: what is new below a new node counts with it, what only moved there
// does not.
std::size_t DiffBuilder::countAdded(const ConfigNode &after) const
{
    if (m_pairs.GetBefore(after))
        return 0;
    std::size_t count = 1;
    for (const auto &child : after.Children())
        count += countAdded(*child);
    return count;
}

std::size_t DiffBuilder::countRemoved(const ConfigNode &before) const
{
    if (m_pairs.GetAfter(before))
        return 0;
    std::size_t count = 1;
    for (const auto &child : before.Children())
        count += countRemoved(*child);
    return count;
}

void DiffBuilder::noteOrder(const ConfigNode &before, const ConfigNode &after)
{
    std::unordered_map<const ConfigNode *, int> placeOf;
    for (const auto &child : before.Children())
        placeOf.emplace(child.get(), int(placeOf.size()));
    std::vector<int> places;
    std::vector<const ConfigNode *> children;
    for (const auto &child : after.Children()) {
        const ConfigNode *same = m_pairs.GetBefore(*child);
        const auto place = same ? placeOf.find(same) : placeOf.end();
        if (place == placeOf.end())
            continue;
        places.push_back(place->second);
        children.push_back(child.get());
    }
    const std::vector<bool> stays = staying(places);
    for (std::size_t i = 0; i < children.size(); ++i) {
        if (!stays[i])
            m_reordered.insert(children[i]);
    }
}

void DiffBuilder::compare(const ConfigNode &before, const ConfigNode &after)
{
    NodeDifference found;
    found.isReordered = m_reordered.count(&after) != 0;
    if (before.GetParent() && after.GetParent())
        found.isMoved = m_pairs.GetAfter(*before.GetParent()) != after.GetParent();
    compareTexts(before, after, found);
    for (const PropertyDescriptor &d : after.GetKind()->properties) {
        if (!isEqual(d, before, after))
            found.properties.push_back({PropertyDifference::Value, d.valueId, d.nameRu,
                                        ValueWords(d, before), ValueWords(d, after)});
    }
    compareForeign(before, after, found);
    if (!found.isMoved && !found.isReordered && found.properties.empty())
        return;
    found.before = before.GetId();
    found.after = after.GetId();
    found.path = after.GetPath();
    found.pathBefore = before.GetPath();
    found.kind = after.GetKind()->nameRu;
    m_found.push_back(std::move(found));
}

void DiffBuilder::compareTexts(const ConfigNode &before, const ConfigNode &after,
                               NodeDifference &found)
{
    const auto note = [&](PropertyDifference::enWhat what, const char *word,
                          const std::string &left, const std::string &right) {
        if (left != right)
            found.properties.push_back({what, 0, word, QuotedWords(left), QuotedWords(right)});
    };
    note(PropertyDifference::Name, "Имя", before.GetName(), after.GetName());
    note(PropertyDifference::Description, "Описание", before.GetDescription(),
         after.GetDescription());
}

// Attributes that no property takes; comments say nothing to the station.
void DiffBuilder::compareForeign(const ConfigNode &before, const ConfigNode &after,
                                 NodeDifference &found)
{
    std::map<std::string, std::pair<std::string, std::string>> values;
    for (const auto &[key, value] : before.GetForeignAttributes())
        values[key].first = value;
    for (const auto &[key, value] : after.GetForeignAttributes())
        values[key].second = value;
    for (const auto &[key, pair] : values) {
        if (key.front() != '#' && pair.first != pair.second)
            found.properties.push_back({PropertyDifference::Foreign, 0, "атрибут " + key,
                                        QuotedWords(pair.first), QuotedWords(pair.second)});
    }
}

bool DiffBuilder::isEqual(const PropertyDescriptor &d, const ConfigNode &before,
                          const ConfigNode &after) const
{
    if (d.binding.type == PropertyType::Link)
        return isEqual(*static_cast<const NodeLink *>(d.binding.data(before)),
                       *static_cast<const NodeLink *>(d.binding.data(after)));
    if (d.binding.type != PropertyType::Links)
        return d.binding.equal(before, after);
    const auto &left = *static_cast<const NodeLinks *>(d.binding.data(before));
    const auto &right = *static_cast<const NodeLinks *>(d.binding.data(after));
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [this](const NodeLink &l, const NodeLink &r) { return isEqual(l, r); });
}

// Equal when they lead to the same node, whatever its number.
bool DiffBuilder::isEqual(const NodeLink &before, const NodeLink &after) const
{
    const ConfigNode *left = m_before.FindNode(before.GetNodeId());
    const ConfigNode *right = m_after.FindNode(after.GetNodeId());
    if (!left || !right)
        return !left && !right && before.GetNodeId() == after.GetNodeId();
    return m_pairs.GetAfter(*left) == right;
}

} // namespace Nodes
