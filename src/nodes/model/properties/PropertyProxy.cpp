#include "nodes/model/properties/PropertyProxy.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/values/NColor.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

namespace Nodes {

namespace {

using Alive = std::vector<const ConfigNode *>;

template <class Value> bool isSame(const void *left, const void *right)
{
    return *static_cast<const Value *>(left) == *static_cast<const Value *>(right);
}

// Members of different classes are of one C++ type when their properties are the same.
bool (*comparer(PropertyType type))(const void *, const void *)
{
    switch (type) {
    case PropertyType::Bool:
        return &isSame<bool>;
    case PropertyType::Int:
        return &isSame<int>;
    case PropertyType::UInt:
        return &isSame<unsigned>;
    case PropertyType::Double:
        return &isSame<double>;
    case PropertyType::Color:
        return &isSame<NColor>;
    case PropertyType::Link:
        return &isSame<NodeLink>;
    case PropertyType::Links:
        return &isSame<NodeLinks>;
    case PropertyType::Resource:
        return &isSame<ResourceLink>;
    case PropertyType::String:
    case PropertyType::Secret:
        break;
    }
    return &isSame<std::string>;
}

/// Looks a kind's row up once for the nodes of that kind that follow each other.
class Rows
{
public:
    explicit Rows(unsigned valueId) : m_valueId(valueId) {}

    const PropertyDescriptor *of(const ConfigNode &node)
    {
        if (node.GetKind() != m_kind) {
            m_kind = node.GetKind();
            m_row = m_kind ? m_kind->FindProperty(m_valueId) : nullptr;
        }
        return m_row;
    }

private:
    unsigned m_valueId;
    const KindInfo *m_kind = nullptr;
    const PropertyDescriptor *m_row = nullptr;
};

PropertySummary summarize(const Alive &nodes, const std::string &(BasicNode::*text)() const)
{
    PropertySummary summary;
    summary.count = nodes.size();
    if (nodes.empty())
        return summary;
    summary.text = (nodes.front()->*text)();
    summary.isMixed = std::any_of(nodes.begin(), nodes.end(), [&](const ConfigNode *node) {
        return (node->*text)() != summary.text;
    });
    return summary;
}

} // namespace

void PropertyProxy::AddNode(const NodeLink &node)
{
    if (node.isValid() && (m_ids.insert(node.GetNodeId()).second || !m_nodes.Contains(node)))
        m_nodes.push_back(node);
}

bool PropertyProxy::Contains(const NodeLink &node) const
{
    return m_ids.count(node.GetNodeId()) != 0 && m_nodes.Contains(node);
}

Alive PropertyProxy::alive() const
{
    Alive nodes;
    nodes.reserve(m_nodes.size());
    for (const NodeLink &link : m_nodes) {
        if (const ConfigNode *node = link.GetNode())
            nodes.push_back(node);
    }
    return nodes;
}

std::vector<const PropertyDescriptor *> PropertyProxy::GetDescriptors() const
{
    std::vector<const PropertyDescriptor *> common;
    std::unordered_set<const KindInfo *> seen;
    for (const ConfigNode *node : alive()) {
        const KindInfo *kind = node->GetKind();
        if (!kind || !seen.insert(kind).second)
            continue;
        if (seen.size() == 1) {
            for (const PropertyDescriptor &d : kind->properties)
                common.push_back(&d);
            continue;
        }
        const auto isMissing = [kind](const PropertyDescriptor *d) {
            const PropertyDescriptor *own = kind->FindProperty(d->valueId);
            return !own || !own->IsSameAs(*d);
        };
        common.erase(std::remove_if(common.begin(), common.end(), isMissing), common.end());
    }
    return common;
}

std::vector<BasicProperty *> PropertyProxy::GetProperties() const
{
    std::vector<BasicProperty *> common;
    const Alive nodes = alive();
    for (const PropertyDescriptor *d : GetDescriptors())
        common.push_back(nodes.front()->GetPropertyByValueId(d->valueId));
    return common;
}

Result PropertyProxy::SetProperty(unsigned valueId, const boost::any &value)
{
    std::vector<std::pair<ConfigNode *, boost::any>> changed;
    for (const NodeLink &link : m_nodes) {
        ConfigNode *node = link.GetNode();
        if (!node)
            continue;
        const BasicProperty *property = node->GetPropertyByValueId(valueId);
        const boost::any old = property ? property->GetPropertyValue() : boost::any();
        const Result result = node->SetProperty(valueId, value);
        if (result) {
            changed.emplace_back(node, old);
            continue;
        }
        for (const auto &[done, previous] : changed)
            (void)done->SetProperty(valueId, previous);
        return result;
    }
    return Result();
}

PropertySummary PropertyProxy::GetSummary(unsigned valueId) const
{
    PropertySummary summary;
    const Alive nodes = alive();
    Rows rows(valueId);
    const PropertyDescriptor *first = nodes.empty() ? nullptr : rows.of(*nodes.front());
    if (!first)
        return summary;
    summary.text = first->binding.format(*first, *nodes.front());
    summary.isDefault = nodes.front()->GetKind()->IsDefault(*first, *nodes.front());
    const void *value = first->binding.data(*nodes.front());
    const auto equal = comparer(first->binding.type);
    for (const ConfigNode *node : nodes) {
        const PropertyDescriptor *row = rows.of(*node);
        if (!row || !row->IsSameAs(*first))
            continue;
        ++summary.count;
        summary.isMixed = summary.isMixed || !equal(value, row->binding.data(*node));
        summary.isDefault = summary.isDefault && node->GetKind()->IsDefault(*row, *node);
    }
    return summary;
}

PropertySummary PropertyProxy::GetNameSummary() const
{
    return summarize(alive(), &BasicNode::GetName);
}

PropertySummary PropertyProxy::GetDescriptionSummary() const
{
    PropertySummary summary = summarize(alive(), &BasicNode::GetDescription);
    summary.isDefault = summary.text.empty() && !summary.isMixed;
    return summary;
}

std::vector<std::pair<std::string, std::size_t>> PropertyProxy::CountValues(unsigned valueId,
                                                                            std::size_t limit) const
{
    std::unordered_map<std::string, std::size_t> counts;
    Rows rows(valueId);
    for (const ConfigNode *node : alive()) {
        if (const PropertyDescriptor *row = rows.of(*node))
            ++counts[row->binding.format(*row, *node)];
    }
    std::vector<std::pair<std::string, std::size_t>> values(counts.begin(), counts.end());
    std::sort(values.begin(), values.end(), [](const auto &left, const auto &right) {
        return left.second != right.second ? left.second > right.second : left.first < right.first;
    });
    if (values.size() > limit)
        values.resize(limit);
    return values;
}

Connection PropertyProxy::ConnectChanged(std::function<void(const Change &)> slot) const
{
    NodesCollection *project = m_nodes.empty() ? nullptr : m_nodes[0].GetNodesCollection();
    if (!project)
        return {};
    const auto ids = std::make_shared<const std::unordered_set<unsigned long>>(m_ids);
    return project->ConnectChanged([ids, slot = std::move(slot)](const NodeChange &change) {
        if (change.what == NodeChange::ChildRemoved)
            slot({Change::Removed, change.child, 0});
        if (ids->count(change.node.GetNodeId()) == 0)
            return;
        switch (change.what) {
        case NodeChange::Name:
        case NodeChange::Description:
            return slot({Change::Text, change.node, 0});
        case NodeChange::Properties:
            return slot({Change::Property, change.node, change.valueId});
        case NodeChange::ChildAdded:
        case NodeChange::ChildRemoved:
        case NodeChange::ChildMoved:
            return slot({Change::Children, change.node, 0});
        }
    });
}

} // namespace Nodes
