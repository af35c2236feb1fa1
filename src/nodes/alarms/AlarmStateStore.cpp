#include "nodes/alarms/AlarmStateStore.h"

#include "nodes/storage/SqliteStatement.h"

#include <filesystem>

namespace Nodes {

namespace {

constexpr const char *schema = R"(
CREATE TABLE IF NOT EXISTS alarms (
    node INTEGER PRIMARY KEY, active INTEGER NOT NULL, acked INTEGER NOT NULL,
    suppressed INTEGER NOT NULL, out_of_service INTEGER NOT NULL, shelved_until INTEGER NOT NULL,
    changed INTEGER NOT NULL, occurrence INTEGER NOT NULL))";

} // namespace

Result AlarmStateStore::Open(const std::string &file, std::string &setAside)
{
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
    Result result = openOnce(file);
    if (result || !m_database.IsDamaged())
        return result;
    m_database.Close();
    setAside = SqliteDatabase::SetAside(file);
    return setAside.empty() ? result : openOnce(file);
}

Result AlarmStateStore::openOnce(const std::string &file)
{
    Result result = m_database.Open(file, SqliteDatabase::Mode::ReadWrite);
    if (!result)
        return result;
    result = m_database.Execute(schema);
    if (!result)
        m_database.Close();
    return result;
}

Result AlarmStateStore::Load(Memories &memories)
{
    SqliteStatement s(m_database, "SELECT node, active, acked, suppressed, out_of_service, "
                                  "shelved_until, changed, occurrence FROM alarms");
    while (s.Step()) {
        AlarmMemory &memory = memories[static_cast<unsigned long>(s.Integer(0))];
        memory.isActive = s.Integer(1) != 0;
        memory.isAcked = s.Integer(2) != 0;
        memory.isSuppressed = s.Integer(3) != 0;
        memory.isOutOfService = s.Integer(4) != 0;
        memory.shelvedUntil = s.Integer(5);
        memory.changed = s.Integer(6);
        memory.occurrence = static_cast<unsigned long>(s.Integer(7));
    }
    return s.GetResult();
}

Result AlarmStateStore::Save(const Memories &memories)
{
    Result result = m_database.Execute("BEGIN IMMEDIATE");
    if (!result)
        return result;
    result = write(memories);
    if (result)
        result = m_database.Execute("COMMIT");
    if (!result)
        (void)m_database.Execute("ROLLBACK");
    return result;
}

Result AlarmStateStore::write(const Memories &memories)
{
    SqliteStatement remove(m_database, "DELETE FROM alarms WHERE node = ?1");
    SqliteStatement replace(m_database,
                            "REPLACE INTO alarms VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    for (const auto &[node, memory] : memories) {
        SqliteStatement &s = memory.isBlank() ? remove : replace;
        s.Bind(1, static_cast<std::int64_t>(node));
        if (!memory.isBlank()) {
            s.Bind(2, std::int64_t(memory.isActive));
            s.Bind(3, std::int64_t(memory.isAcked));
            s.Bind(4, std::int64_t(memory.isSuppressed));
            s.Bind(5, std::int64_t(memory.isOutOfService));
            s.Bind(6, memory.shelvedUntil);
            s.Bind(7, memory.changed);
            s.Bind(8, static_cast<std::int64_t>(memory.occurrence));
        }
        const Result written = s.Run();
        if (!written)
            return written;
    }
    return Result();
}

} // namespace Nodes
