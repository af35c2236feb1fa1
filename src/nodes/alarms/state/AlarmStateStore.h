#pragma once

#include "nodes/alarms/engine/AlarmMemory.h"
#include "nodes/storage/BasicStore.h"
#include "nodes/storage/RecordSource.h"
#include "nodes/storage/StoreTable.h"

#include <map>
#include <string>

namespace Nodes {

/// What is kept of one alarm.
struct StoredAlarm
{
    AlarmMemory memory;
    std::string path;           ///< of the alarm's node, "" in files of earlier versions
    Timestamp missingSince = 0; ///< wall time of the first start without the node; 0: it is there
    /// Instead of that time: a file of an earlier version, which did not say whose it is, had it.
    static constexpr Timestamp Unclaimed = 1;
};

/// Where the alarms' memories are kept over a restart of the station, by node id: those of one
/// project and station, whatever else stands in the same place. What was damaged begins afresh.
class AlarmStateStore : public BasicStore
{
public:
    using Memories = std::map<unsigned long, StoredAlarm>;

    /// Also the highest number of an occurrence that was ever saved.
    [[nodiscard]] virtual Result Load(Memories &memories, unsigned long &lastOccurrence) = 0;
    /// Replaces what is stored of these alarms; all or none. Blank memories are removed.
    [[nodiscard]] virtual Result Save(const Memories &memories) = 0;
};

/// Kinds of store by their location; each gets whose states it is to keep. A path is an SQLite
/// file.
NODES_EXPORT StoreTable<AlarmStateStore, RecordHome> &AlarmStateStores();

} // namespace Nodes
