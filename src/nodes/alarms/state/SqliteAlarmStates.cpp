#include "nodes/alarms/state/SqliteAlarmStates.h"

#include "nodes/storage/SqliteStatement.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace Nodes {

namespace {

constexpr const char *schema = R"(
CREATE TABLE IF NOT EXISTS alarms (
    node INTEGER PRIMARY KEY, active INTEGER NOT NULL, acked INTEGER NOT NULL,
    suppressed INTEGER NOT NULL, out_of_service INTEGER NOT NULL, shelved_until INTEGER NOT NULL,
    changed INTEGER NOT NULL, occurrence INTEGER NOT NULL);
CREATE TABLE IF NOT EXISTS places (
    node INTEGER PRIMARY KEY, path TEXT NOT NULL, missing_since INTEGER NOT NULL);
CREATE TABLE IF NOT EXISTS occurrences (
    node INTEGER PRIMARY KEY, raised INTEGER NOT NULL, acknowledged INTEGER NOT NULL,
    returned INTEGER NOT NULL, seen INTEGER NOT NULL);
CREATE TABLE IF NOT EXISTS numbers (
    one INTEGER PRIMARY KEY CHECK (one = 1), last_occurrence INTEGER NOT NULL))";

constexpr const char *numbering = R"(
INSERT INTO numbers VALUES (1, ?1)
ON CONFLICT (one) DO UPDATE SET last_occurrence = max(last_occurrence, ?1))";

// Of files of earlier versions only what is kept since then lacks its rows.
constexpr const char *selection = R"(
SELECT node, active, acked, suppressed, out_of_service, shelved_until, changed, occurrence, path,
    missing_since, raised, acknowledged, returned, seen
FROM alarms LEFT JOIN places USING (node) LEFT JOIN occurrences USING (node))";

Result remove(SqliteStatement &s, unsigned long node)
{
    s.Bind(1, static_cast<std::int64_t>(node));
    return s.Run();
}

Result replace(SqliteStatement &s, unsigned long node, const AlarmMemory &memory)
{
    s.Bind(1, static_cast<std::int64_t>(node));
    s.Bind(2, std::int64_t(memory.isActive));
    s.Bind(3, std::int64_t(memory.isAcked));
    s.Bind(4, std::int64_t(memory.isSuppressed));
    s.Bind(5, std::int64_t(memory.isOutOfService));
    s.Bind(6, memory.shelvedUntil);
    s.Bind(7, memory.changed);
    s.Bind(8, static_cast<std::int64_t>(memory.occurrence));
    return s.Run();
}

Result replaceTimes(SqliteStatement &s, unsigned long node, const AlarmMemory &memory)
{
    s.Bind(1, static_cast<std::int64_t>(node));
    s.Bind(2, memory.raised);
    s.Bind(3, memory.acknowledged);
    s.Bind(4, memory.returned);
    s.Bind(5, std::int64_t(memory.isSeen));
    return s.Run();
}

/// An earlier version kept the last change alone. Occurrences are numbered by the milliseconds at
/// which they are raised, which tells that time all the same.
void guessTimes(AlarmMemory &memory)
{
    if (memory.occurrence == 0)
        return;
    memory.raised = std::min(static_cast<Timestamp>(memory.occurrence) * 1000, memory.changed);
    if (memory.isActive && memory.isAcked)
        memory.acknowledged = memory.changed;
    if (!memory.isActive)
        memory.returned = memory.changed;
}

void readTimes(const SqliteStatement &s, AlarmMemory &memory)
{
    if (s.IsNull(10))
        return guessTimes(memory);
    memory.raised = s.Integer(10);
    memory.acknowledged = s.Integer(11);
    memory.returned = s.Integer(12);
    memory.isSeen = s.Integer(13) != 0;
}

Result replace(SqliteStatement &s, unsigned long node, const StoredAlarm &stored)
{
    s.Bind(1, static_cast<std::int64_t>(node));
    s.Bind(2, std::string_view(stored.path));
    s.Bind(3, stored.missingSince);
    return s.Run();
}

} // namespace

Result SqliteAlarmStates::Open(std::string &setAside)
{
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(m_file).parent_path(), ignored);
    bool isPutBack = false;
    // What it cannot be read for is known to the alarms themselves, except of those that are not
    // in the project now.
    if (m_former)
        (void)m_former->PutBack([] {}, isPutBack);
    Result result = openOnce();
    if (result)
        m_former.reset();
    if (result || !m_database->IsDamaged())
        return result;
    m_database->Close();
    setAside = SqliteDatabase::SetAside(m_file);
    return setAside.empty() ? result : openOnce();
}

void SqliteAlarmStates::Close()
{
    m_database->Close();
    m_former.reset();
}

bool SqliteAlarmStates::NoticeMove()
{
    if (!m_database->IsMoved())
        return false;
    m_former = std::exchange(m_database, std::make_unique<SqliteDatabase>());
    return true;
}

Result SqliteAlarmStates::openOnce()
{
    Result result = m_database->Open(m_file, SqliteDatabase::Mode::ReadWrite);
    if (!result)
        return result;
    result = m_database->Execute(schema);
    if (!result)
        m_database->Close();
    return result;
}

Result SqliteAlarmStates::Load(Memories &memories, unsigned long &lastOccurrence)
{
    SqliteStatement numbers(*m_database, "SELECT last_occurrence FROM numbers");
    if (numbers.Step())
        lastOccurrence = static_cast<unsigned long>(numbers.Integer(0));
    SqliteStatement s(*m_database, selection);
    while (s.Step()) {
        StoredAlarm &stored = memories[static_cast<unsigned long>(s.Integer(0))];
        AlarmMemory &memory = stored.memory;
        memory.isActive = s.Integer(1) != 0;
        memory.isAcked = s.Integer(2) != 0;
        memory.isSuppressed = s.Integer(3) != 0;
        memory.isOutOfService = s.Integer(4) != 0;
        memory.shelvedUntil = s.Integer(5);
        memory.changed = s.Integer(6);
        memory.occurrence = static_cast<unsigned long>(s.Integer(7));
        stored.path = s.Bytes(8);
        stored.missingSince = s.Integer(9);
        readTimes(s, memory);
    }
    return numbers.GetResult() ? s.GetResult() : numbers.GetResult();
}

Result SqliteAlarmStates::Save(const Memories &memories)
{
    Result result = m_database->Execute("BEGIN IMMEDIATE");
    if (!result)
        return result;
    result = write(memories);
    if (result)
        result = m_database->Execute("COMMIT");
    if (result)
        return result;
    const bool isDamaged = m_database->IsDamaged();
    (void)m_database->Execute("ROLLBACK");
    if (isDamaged)
        m_database->Close(); // opened anew it is set aside
    return result;
}

Result SqliteAlarmStates::write(const Memories &memories)
{
    SqliteStatement forget(*m_database, "DELETE FROM alarms WHERE node = ?1");
    SqliteStatement forgetPlace(*m_database, "DELETE FROM places WHERE node = ?1");
    SqliteStatement forgetTimes(*m_database, "DELETE FROM occurrences WHERE node = ?1");
    SqliteStatement keep(*m_database,
                         "REPLACE INTO alarms VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    SqliteStatement keepPlace(*m_database, "REPLACE INTO places VALUES (?1, ?2, ?3)");
    SqliteStatement keepTimes(*m_database, "REPLACE INTO occurrences VALUES (?1, ?2, ?3, ?4, ?5)");
    std::int64_t last = 0;
    for (const auto &[node, stored] : memories) {
        last = std::max(last, static_cast<std::int64_t>(stored.memory.occurrence));
        const bool isBlank = stored.memory.isBlank();
        Result written = isBlank ? remove(forget, node) : replace(keep, node, stored.memory);
        if (written)
            written = isBlank ? remove(forgetPlace, node) : replace(keepPlace, node, stored);
        if (written)
            written =
                isBlank ? remove(forgetTimes, node) : replaceTimes(keepTimes, node, stored.memory);
        if (!written)
            return written;
    }
    SqliteStatement number(*m_database, numbering);
    number.Bind(1, last);
    return number.Run();
}

} // namespace Nodes
