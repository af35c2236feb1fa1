#pragma once

#include "nodes/alarms/AlarmMemory.h"
#include "nodes/storage/SqliteDatabase.h"

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

/// File that keeps the alarms' memories over a restart of the station, by node id. One thread at a
/// time.
class AlarmStateStore
{
public:
    using Memories = std::map<unsigned long, StoredAlarm>;

    /// A damaged file is set aside and named in `setAside`; the alarms then begin afresh.
    [[nodiscard]] Result Open(const std::string &file, std::string &setAside);
    void Close() { m_database.Close(); }
    bool IsOpen() const { return m_database.IsOpen(); }
    [[nodiscard]] Result Load(Memories &memories);
    /// Replaces what is stored of these alarms; all or none. Blank memories are removed.
    [[nodiscard]] Result Save(const Memories &memories);

private:
    [[nodiscard]] Result openOnce(const std::string &file);
    [[nodiscard]] Result write(const Memories &memories);

    SqliteDatabase m_database;
};

} // namespace Nodes
