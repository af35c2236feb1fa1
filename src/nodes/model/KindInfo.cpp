#include "nodes/model/KindInfo.h"

#include <algorithm>
#include <stdexcept>

namespace Nodes {

const PropertyDescriptor *KindInfo::FindProperty(std::string_view propertyKey) const
{
    const auto found = m_byKey.find(propertyKey);
    return found == m_byKey.end() ? nullptr : &properties[found->second];
}

const PropertyDescriptor *KindInfo::FindProperty(unsigned valueId) const
{
    const auto found = m_byId.find(valueId);
    return found == m_byId.end() ? nullptr : &properties[found->second];
}

bool KindInfo::AllowsChild(NodeType child) const
{
    return std::any_of(children.begin(), children.end(), [&](const NodeType &allowed) {
        return allowed == child || (allowed.GetSubtype() == NodeType::SubtypeNone &&
                                    allowed.GetFamily() == child.GetFamily());
    });
}

bool KindInfo::IsDefault(const PropertyDescriptor &descriptor, const BasicNode &node) const
{
    return descriptor.binding.equal(node, *prototype);
}

void KindInfo::Prepare()
{
    for (std::size_t i = 0; i < properties.size(); ++i) {
        PropertyDescriptor &descriptor = properties[i];
        descriptor.defaultText = descriptor.binding.format(descriptor, *prototype);
        const bool isNew = m_byKey.emplace(descriptor.key, i).second &&
                           m_byId.emplace(descriptor.valueId, i).second;
        if (!isNew)
            throw std::logic_error("kind " + key + " repeats the property " + descriptor.key);
    }
}

} // namespace Nodes
