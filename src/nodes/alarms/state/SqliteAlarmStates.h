#pragma once

#include "nodes/alarms/state/AlarmStateStore.h"
#include "nodes/storage/SqliteStore.h"

#include <string>

namespace Nodes {

class SqliteStatement;

/// The memories in an SQLite file. Those in a file of an earlier version, which did not know whose
/// they are, become those of the home that opens it first.
class NODES_EXPORT SqliteAlarmStates : public SqliteStore<AlarmStateStore>
{
public:
    explicit SqliteAlarmStates(const std::string &file, RecordHome home = {});

    [[nodiscard]] Result Load(Memories &memories, unsigned long &lastOccurrence) override;
    [[nodiscard]] Result Save(const Memories &memories) override;

private:
    [[nodiscard]] Result write(const Memories &memories);

    const RecordHome m_home;
};

} // namespace Nodes
