#pragma once

#include "nodes/model/NodesArray.h"
#include "nodes/storage/DatabaseFiles.h"

namespace Nodes {

class systemCore;

/// Nodes of the core's station that have database files: its archivers, then the station itself.
/// GUI thread.
NODES_EXPORT NodesArray NodesWithDatabases(const systemCore &core);

/// Files of such a node. An archiver's: its database, and what was made of it and lies beside it
/// under names that begin like its own (set aside, copied); none when it is kept on a server. A
/// station's: all others in the data directory (journal, states of alarms). None of other nodes.
/// GUI thread; the value itself on any.
NODES_EXPORT DatabaseFiles DatabaseFilesOf(const NodeLink &node);

} // namespace Nodes
