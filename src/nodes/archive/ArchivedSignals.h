#pragma once

#include "nodes/NodesExport.h"

#include <map>

namespace Nodes {

class BasicNode;
class BasicSignal;

/// How a signal is archived, and what says so.
struct ArchiveOrder
{
    const BasicNode *by = nullptr; ///< archiverSource or archiverGroup
    int days = 0;                  ///< 0: as long as the archive keeps others
    int megabytes = 0;             ///< 0: whatever its size
};

/// The signals that archive sources and groups of this station name. A source goes before groups,
/// the group of a folder before that of the folder around it. `node`: any of the project. GUI
/// thread.
NODES_EXPORT std::map<const BasicSignal *, ArchiveOrder> FindArchivedSignals(const BasicNode &node);

} // namespace Nodes
