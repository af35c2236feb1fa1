#pragma once

#include "nodes/storage/records/RecordFinding.h"

#include <string>

namespace Nodes {

/// What the journal's entry says about its own files, in Russian.
std::string JournalFindingText(const RecordFinding &finding);

} // namespace Nodes
