#include "nodes/model/properties/BasicProperty.h"

#include "nodes/model/properties/PropertyDescriptor.h"

namespace Nodes {

BasicProperty::BasicProperty(BasicNode *node, const PropertyDescriptor *descriptor)
    : m_node(node), m_descriptor(descriptor)
{
}

unsigned BasicProperty::GetId() const
{
    return m_descriptor->valueId;
}

unsigned BasicProperty::GetValueId() const
{
    return m_descriptor->valueId;
}

boost::any BasicProperty::GetPropertyValue() const
{
    return m_descriptor->binding.get(*m_node);
}

std::string BasicProperty::ToString() const
{
    return m_descriptor->binding.format(*m_descriptor, *m_node);
}

std::string BasicProperty::GetName() const
{
    return m_descriptor->nameRu;
}

} // namespace Nodes
