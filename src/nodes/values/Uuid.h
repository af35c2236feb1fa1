#pragma once

#include "nodes/NodesExport.h"

#include <string>
#include <string_view>

namespace Nodes {

/// A new UUID (version 4) in lower case: "xxxxxxxx-xxxx-4xxx-xxxx-xxxxxxxxxxxx".
NODES_EXPORT std::string RandomUuid();
/// The UUID (version 8) that belongs to a name: always the same for the same name.
NODES_EXPORT std::string UuidOfName(std::string_view name);
/// Whether the text has the form of a UUID, in either case.
NODES_EXPORT bool IsUuid(std::string_view text);

} // namespace Nodes
