#pragma once

#include "nodes/alarms/state/AlarmStateStore.h"
#include "nodes/storage/SqliteDatabase.h"

#include <memory>

namespace Nodes {

/// The memories in an SQLite file. Files of earlier versions are read and brought up to date.
class NODES_EXPORT SqliteAlarmStates : public AlarmStateStore
{
public:
    explicit SqliteAlarmStates(std::string file) : m_file(std::move(file)) {}

    [[nodiscard]] Result Open(std::string &setAside) override;
    void Close() override;
    bool IsOpen() const override { return m_database->IsOpen(); }
    bool NoticeMove() override;
    [[nodiscard]] Result Load(Memories &memories, unsigned long &lastOccurrence) override;
    [[nodiscard]] Result Save(const Memories &memories) override;

private:
    [[nodiscard]] Result openOnce();
    [[nodiscard]] Result write(const Memories &memories);

    const std::string m_file;
    std::unique_ptr<SqliteDatabase> m_database = std::make_unique<SqliteDatabase>();
    std::unique_ptr<SqliteDatabase> m_former; // of a file that is no longer there
};

} // namespace Nodes
