#include "nodes/model/properties/PropertyValue.h"

#include "nodes/model/properties/PropertyText.h"

namespace Nodes {

namespace {

template <class Value>
boost::any read(const PropertyDescriptor &d, std::string_view text, Collection project)
{
    Value value{};
    return ParseProperty(d, text, project, value) ? boost::any(std::move(value)) : boost::any();
}

} // namespace

boost::any ReadPropertyValue(const PropertyDescriptor &d, std::string_view text, Collection project)
{
    switch (d.binding.type) {
    case PropertyType::Bool:
        return read<bool>(d, text, project);
    case PropertyType::Int:
        return read<int>(d, text, project);
    case PropertyType::UInt:
        return read<unsigned>(d, text, project);
    case PropertyType::Double:
        return read<double>(d, text, project);
    case PropertyType::Color:
        return read<NColor>(d, text, project);
    case PropertyType::Link:
        return read<NodeLink>(d, text, project);
    case PropertyType::Links:
        return read<NodeLinks>(d, text, project);
    case PropertyType::Resource:
        return read<ResourceLink>(d, text, project);
    case PropertyType::String:
    case PropertyType::Secret:
        break;
    }
    return read<std::string>(d, text, project);
}

} // namespace Nodes
