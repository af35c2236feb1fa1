#pragma once

#include "nodes/NodesExport.h"

#include <string>

namespace Nodes {

class ConfigNode;

/// Places in a project as its file shows them: "project[Цех]/folder[Насосы]/label[Давление]".
namespace ElementPath {

/// The part of one element before those below it; "" for none below.
NODES_EXPORT std::string Join(const std::string &kind, const std::string &name,
                              const std::string &below);
NODES_EXPORT std::string Of(const ConfigNode &node);

} // namespace ElementPath

} // namespace Nodes
