#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <boost/any.hpp>

#include <string>
#include <string_view>

namespace Nodes {

/// Value of the property's own C++ type, read from its text in project files; empty when the text
/// does not read as that type or is out of the property's range. Links refer into `project`.
NODES_EXPORT boost::any ReadPropertyValue(const PropertyDescriptor &descriptor,
                                          std::string_view text, const NodesCollection *project);

} // namespace Nodes
