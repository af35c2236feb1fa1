#pragma once

#include "nodes/events/BasicEvent.h"
#include "nodes/values/Result.h"

namespace Nodes {

class ConfigNode;

/// Journal entries about nodes, all made alike: where, what, and who did it. Names and places of
/// nodes are fixed while the station runs, so any thread may read them then.

/// An entry about that node, with its path as the source, of nobody so far.
NODES_EXPORT BasicEvent EventAt(const NodeLink &source, EventLevel level, std::string text,
                                EventType type = TypeMessage);
/// Hands the entry to the journal of the node's project, in the name of whoever acts there when it
/// is about an act of a user. NotAvailable without a journal.
NODES_EXPORT Result StoreEvent(const ConfigNode &node, BasicEvent event);

/// Something a user did to a node, or tried to.
struct NodeAct
{
    const char *done;    ///< what is said of it
    const char *refused; ///< before the reason, when it was refused
    std::string oldValue;
    std::string newValue;
};
/// Journals how it ended; nothing without a journal.
NODES_EXPORT void StoreAct(const ConfigNode &node, const Result &result, NodeAct act);

} // namespace Nodes
