#pragma once

#include "nodes/NodesExport.h"

#include <string>

namespace Nodes {

class Result;

/// Russian text of a result for journals: what happened, then in brackets the detail, which is
/// technical and may be English. Any thread.
NODES_EXPORT std::string OperatorText(const Result &result);

} // namespace Nodes
