#pragma once

#include "nodes/alarms/engine/AlarmMemory.h"
#include "nodes/values/Result.h"

#include <map>
#include <string>

namespace Nodes {

/// What is kept of one alarm.
struct StoredAlarm
{
    AlarmMemory memory;
    std::string path;           ///< of the alarm's node, "" in files of earlier versions
    Timestamp missingSince = 0; ///< wall time of the first start without the node; 0: it is there
};

/// Where the alarms' memories are kept over a restart of the station, by node id. Any call may
/// take as long as the disk does. One thread at a time.
class AlarmStateStore
{
public:
    using Memories = std::map<unsigned long, StoredAlarm>;

    virtual ~AlarmStateStore() = default;

    /// What is damaged is set aside and named in `setAside`; the alarms then begin afresh.
    [[nodiscard]] virtual Result Open(std::string &setAside) = 0;
    virtual void Close() = 0;
    /// False also after a failure that only another Open can mend.
    virtual bool IsOpen() const = 0;
    /// True, and the store then counts as closed, when what was opened is not what the next start
    /// would find: the file was removed or replaced. Open saves what it can of it.
    virtual bool NoticeMove() = 0;
    /// Also the highest number of an occurrence that was ever saved.
    [[nodiscard]] virtual Result Load(Memories &memories, unsigned long &lastOccurrence) = 0;
    /// Replaces what is stored of these alarms; all or none. Blank memories are removed.
    [[nodiscard]] virtual Result Save(const Memories &memories) = 0;
};

} // namespace Nodes
