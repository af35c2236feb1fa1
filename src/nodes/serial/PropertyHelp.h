#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <string>

namespace Nodes {

/// Russian words for what a property's text must look like: type, range, admissible words.
NODES_EXPORT std::string DescribeExpected(const PropertyDescriptor &descriptor);

} // namespace Nodes
