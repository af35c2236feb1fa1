#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/ArchiveRetention.h"
#include "nodes/storage/StoreTable.h"
#include "nodes/storage/records/RecordStore.h"

namespace Nodes {

/// Store of samples; its records are packets (SamplePacket). Besides what RecordStore says, an
/// implementation promises:
/// - a signal has one sample of each time: the one that was stored first stays, so importing the
///   same again changes nothing;
/// - samples land where they belong, in whatever order they come;
/// - a record that is no packet is kept as it is, apart, and named by Verify;
/// - Tend packs and takes out what the retention lets go, in steps of some ten milliseconds.
class ArchiveStore : public RecordStore
{
public:
    /// From now on. Any thread.
    virtual void SetRetention(const ArchiveRetentionRules &rules) = 0;
};

/// Kinds of store by their location. A path is an SQLite file.
NODES_EXPORT StoreTable<ArchiveStore> &ArchiveStores();

} // namespace Nodes
