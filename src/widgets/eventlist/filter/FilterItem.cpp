#include "widgets/eventlist/filter/FilterItem.h"

#include "nodes/events/EventColorProperties.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/visual/elements/recorderChannel.h"

#include <algorithm>

namespace Widgets {

using Nodes::EventColorProperties;
using Nodes::NodeType;

namespace {

// What has colours for its events, and what operators are refused or do themselves on the screens.
bool canBeSource(const Nodes::ConfigNode &node)
{
    const NodeType type = node.GetNodeType();
    const Nodes::KindInfo *kind = node.GetKind();
    return (kind && kind->FindProperty(EventColorProperties::Prop::Background.valueId)) ||
           type.GetFamily() == NodeType::TypeFrame || type.GetFamily() == NodeType::TypeWindow ||
           type.GetSubtype() == Nodes::recorderChannel::Code;
}

} // namespace

FilterItem::FilterItem(Nodes::NodeLink link, FilterItem *parent) : m_link(link), m_parent(parent) {}

FilterItem::~FilterItem() = default;

std::unique_ptr<FilterItem> FilterItem::createItem(const Nodes::NodeLink &link)
{
    const Nodes::ConfigNode *node = link.GetNode();
    if (!node)
        return nullptr;
    auto item = std::make_unique<FilterItem>(link);
    for (const Nodes::NodeLink &child : node->GetNodes())
        item->appendChild(createItem(child));
    const bool isOnlyPlace =
        !canBeSource(*node) || node->GetNodeType().GetFamily() == NodeType::TypeFolder;
    return isOnlyPlace && item->m_children.empty() ? nullptr : std::move(item);
}

int FilterItem::row() const
{
    if (!m_parent)
        return 0;
    const Children &siblings = m_parent->m_children;
    return int(std::find_if(siblings.begin(), siblings.end(),
                            [this](const auto &sibling) { return sibling.get() == this; }) -
               siblings.begin());
}

FilterItem *FilterItem::appendChild(std::unique_ptr<FilterItem> child)
{
    if (!child)
        return nullptr;
    child->m_parent = this;
    m_children.push_back(std::move(child));
    return m_children.back().get();
}

void FilterItem::removeChild(int row)
{
    m_children.erase(m_children.begin() + row);
}

FilterItem *FilterItem::find(unsigned long nodeId)
{
    if (m_link.GetNodeId() == nodeId)
        return this;
    for (const auto &child : m_children) {
        if (FilterItem *found = child->find(nodeId))
            return found;
    }
    return nullptr;
}

} // namespace Widgets
