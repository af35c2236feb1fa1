#include "nodes/model/NodesArray.h"

#include "nodes/model/BasicNodeRare.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"

#include <algorithm>

namespace Nodes {

namespace {

void copyProperties(const ConfigNode &from, ConfigNode &to)
{
    for (const PropertyDescriptor &descriptor : from.GetKind()->properties)
        descriptor.binding.copy(from, to);
    for (const auto &[key, value] : from.GetForeignAttributes())
        to.AddForeignAttribute(key, value);
}

} // namespace

bool NodesArray::Contains(const NodeLink &link) const
{
    return std::find(m_links.begin(), m_links.end(), link) != m_links.end();
}

std::unique_ptr<ConfigNode> NodesArray::CreateNodeCopy(NodeType type, const ConfigNode *source)
{
    if (!source || !source->GetKind() || source->GetNodeType() != type)
        return nullptr;
    std::unique_ptr<ConfigNode> copy = source->GetKind()->create();
    copy->m_kind = source->m_kind;
    copy->m_id = source->m_id;
    copy->m_place = source->m_place;
    copy->m_name = source->m_name;
    copy->m_description = source->m_description;
    copyProperties(*source, *copy);
    for (const auto &child : source->Children()) {
        if (auto childCopy = CreateNodeCopy(child->GetNodeType(), child.get())) {
            childCopy->setParent(copy.get());
            copy->m_children.push_back(std::move(childCopy));
        }
    }
    if (const ConfigNode *parent = source->GetParent())
        copy->rare().originalsParent = parent;
    return copy;
}

} // namespace Nodes
