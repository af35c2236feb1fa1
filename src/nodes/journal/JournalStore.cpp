#include "nodes/journal/JournalStore.h"

#include "nodes/storage/SqliteStatement.h"

#include <sqlite3.h>

#include <utility>

namespace Nodes {

namespace {

constexpr std::int64_t currentVersion = 1;

// The head row repeats the last row's id and hash, so that a cut-off end shows as well.
constexpr const char *schema = R"(
BEGIN IMMEDIATE;
CREATE TABLE IF NOT EXISTS events (
    id INTEGER PRIMARY KEY, key INTEGER NOT NULL UNIQUE, time INTEGER NOT NULL,
    level INTEGER NOT NULL, type INTEGER NOT NULL, text TEXT NOT NULL, source TEXT NOT NULL,
    node INTEGER NOT NULL, user TEXT NOT NULL, old_value TEXT NOT NULL, new_value TEXT NOT NULL,
    alarm_state INTEGER NOT NULL, priority INTEGER NOT NULL, occurrence INTEGER NOT NULL,
    hash BLOB NOT NULL);
CREATE INDEX IF NOT EXISTS events_time ON events (time);
CREATE TABLE IF NOT EXISTS head (
    one INTEGER PRIMARY KEY CHECK (one = 1), id INTEGER NOT NULL, hash BLOB NOT NULL);
PRAGMA user_version = 1;
COMMIT)";

constexpr const char *insertion =
    "INSERT INTO events (id, key, time, level, type, text, source, node, user, old_value, "
    "new_value, alarm_state, priority, occurrence, hash) "
    "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15) "
    "ON CONFLICT (key) DO NOTHING";

void bindRow(SqliteStatement &s, const JournalRow &row, std::uint64_t id, const std::string &hash)
{
    const BasicEvent &e = row.event;
    s.Bind(1, static_cast<std::int64_t>(id));
    s.Bind(2, static_cast<std::int64_t>(row.key));
    s.Bind(3, e.time);
    s.Bind(4, std::int64_t(e.level));
    s.Bind(5, std::int64_t(e.type));
    s.Bind(6, e.text);
    s.Bind(7, e.source);
    s.Bind(8, static_cast<std::int64_t>(e.sourceNode.GetNodeId()));
    s.Bind(9, e.user);
    s.Bind(10, e.oldValue);
    s.Bind(11, e.newValue);
    s.Bind(12, std::int64_t(e.alarmState));
    s.Bind(13, std::int64_t(e.priority));
    s.Bind(14, static_cast<std::int64_t>(e.occurrence));
    s.BindBlob(15, hash);
}

} // namespace

Result JournalStore::Open(const std::string &file, std::string &setAside)
{
    Result result(Result::StorageError, file + ": damaged");
    if (!m_isDamaged) {
        result = openOnce(file);
        if (result || !m_database->IsDamaged())
            return result;
    }
    m_database->Close();
    m_isDamaged = false;
    setAside = SqliteDatabase::SetAside(file);
    return setAside.empty() ? result : openOnce(file);
}

void JournalStore::Close()
{
    m_database->Close();
    m_former.reset();
}

bool JournalStore::NoticeMove()
{
    if (!m_database->IsMoved())
        return false;
    m_former = std::exchange(m_database, std::make_unique<SqliteDatabase>());
    return true;
}

Result JournalStore::Restore(const std::function<void()> &step, bool &isRestored)
{
    const Result result = m_former->PutBack(step, isRestored);
    if (result)
        m_former.reset();
    return result;
}

Result JournalStore::openOnce(const std::string &file)
{
    Result result = m_database->Open(file, SqliteDatabase::Mode::ReadWrite);
    if (!result)
        return result;
    std::int64_t version = 0;
    result = readVersion(version);
    if (result && version > currentVersion)
        result = Result(Result::StorageError, file + ": written by a later version of the program");
    if (result)
        result = m_database->Execute(schema);
    if (!result)
        m_database->Close();
    return result;
}

Result JournalStore::readVersion(std::int64_t &version)
{
    SqliteStatement statement(*m_database, "PRAGMA user_version");
    if (statement.Step())
        version = statement.Integer(0);
    return statement.GetResult();
}

Result JournalStore::Append(std::vector<JournalRow> &rows)
{
    Result result = m_database->Execute("BEGIN IMMEDIATE");
    if (!result)
        return result;
    result = insert(rows);
    if (result)
        result = m_database->Execute("COMMIT");
    if (result)
        return result;
    m_isDamaged = m_database->IsDamaged();
    for (JournalRow &row : rows)
        row.event.id = 0;
    // Some failures have rolled back already; a second roll-back then fails, which is no news.
    if (!m_isDamaged)
        (void)m_database->Execute("ROLLBACK");
    return result;
}

Result JournalStore::insert(std::vector<JournalRow> &rows)
{
    std::uint64_t id = 0;
    std::string hash = FirstHash();
    SqliteStatement readHead(*m_database, "SELECT id, hash FROM head");
    if (readHead.Step()) {
        id = static_cast<std::uint64_t>(readHead.Integer(0));
        hash = readHead.Bytes(1);
    }
    if (!readHead.GetResult())
        return readHead.GetResult();
    SqliteStatement insertRow(*m_database, insertion);
    for (JournalRow &row : rows) {
        const std::string next = ChainHash(hash, id + 1, PackRow(row));
        bindRow(insertRow, row, id + 1, next);
        const Result inserted = insertRow.Run();
        if (!inserted)
            return inserted;
        if (sqlite3_changes(m_database->Handle()) == 0)
            continue;
        row.event.id = ++id;
        hash = next;
    }
    SqliteStatement writeHead(*m_database, "REPLACE INTO head (one, id, hash) VALUES (1, ?1, ?2)");
    writeHead.Bind(1, static_cast<std::int64_t>(id));
    writeHead.BindBlob(2, hash);
    return writeHead.Run();
}

} // namespace Nodes
