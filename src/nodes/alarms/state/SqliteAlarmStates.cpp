#include "nodes/alarms/state/SqliteAlarmStates.h"

#include "nodes/storage/SqliteStatement.h"

#include <algorithm>
#include <utility>

namespace Nodes {

namespace {

constexpr std::int64_t currentVersion = 1;

// Of earlier versions, which had no number; some lack the later ones of these.
constexpr const char *unnumbered = R"(
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

constexpr const char *tables = R"(
CREATE TABLE homes (
    id INTEGER PRIMARY KEY, project TEXT NOT NULL, station INTEGER NOT NULL,
    station_name TEXT NOT NULL, UNIQUE (project, station));
CREATE TABLE states (
    home INTEGER NOT NULL, node INTEGER NOT NULL, active INTEGER NOT NULL, acked INTEGER NOT NULL,
    suppressed INTEGER NOT NULL, out_of_service INTEGER NOT NULL, shelved_until INTEGER NOT NULL,
    changed INTEGER NOT NULL, occurrence INTEGER NOT NULL, path TEXT NOT NULL,
    missing_since INTEGER NOT NULL, raised INTEGER NOT NULL, acknowledged INTEGER NOT NULL,
    returned INTEGER NOT NULL, seen INTEGER NOT NULL, PRIMARY KEY (home, node)) WITHOUT ROWID)";

// Nobody knows whose these are: as if they had been found missing, they count where the path is
// that of the alarm. The earliest ones have no times but the last change. Occurrences are numbered
// by the milliseconds at which they are raised, which tells that time all the same.
constexpr const char *takeOver = R"(
INSERT INTO states
SELECT ?1, node, active, acked, suppressed, out_of_service, shelved_until, changed, occurrence,
    coalesce(path, ''),
    CASE WHEN coalesce(path, '') <> '' AND missing_since = 0 THEN ?2
        ELSE coalesce(missing_since, 0) END,
    coalesce(raised, CASE WHEN occurrence = 0 THEN 0 ELSE min(occurrence * 1000, changed) END),
    coalesce(acknowledged, CASE WHEN occurrence <> 0 AND active AND acked THEN changed ELSE 0 END),
    coalesce(returned, CASE WHEN occurrence <> 0 AND NOT active THEN changed ELSE 0 END),
    coalesce(seen, 1)
FROM alarms LEFT JOIN places USING (node) LEFT JOIN occurrences USING (node))";

constexpr const char *dropUnnumbered =
    "DROP TABLE alarms; DROP TABLE places; DROP TABLE occurrences";

constexpr const char *numbering = R"(
INSERT INTO numbers VALUES (1, ?1)
ON CONFLICT (one) DO UPDATE SET last_occurrence = max(last_occurrence, ?1))";

constexpr const char *selection = R"(
SELECT node, active, acked, suppressed, out_of_service, shelved_until, changed, occurrence, path,
    missing_since, raised, acknowledged, returned, seen
FROM states JOIN homes ON homes.id = states.home WHERE project = ?1 AND station = ?2)";

constexpr const char *replacement = "REPLACE INTO states VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, "
                                    "?9, ?10, ?11, ?12, ?13, ?14, ?15)";

Result findHome(SqliteDatabase &database, const RecordHome &home, std::int64_t &number)
{
    SqliteStatement add(database, R"(
INSERT INTO homes (project, station, station_name) VALUES (?1, ?2, ?3)
ON CONFLICT (project, station) DO UPDATE SET station_name = excluded.station_name)");
    add.Bind(1, home.project);
    add.Bind(2, static_cast<std::int64_t>(home.station));
    add.Bind(3, home.stationName);
    const Result added = add.Run();
    if (!added)
        return added;
    SqliteStatement find(database, "SELECT id FROM homes WHERE project = ?1 AND station = ?2");
    find.Bind(1, home.project);
    find.Bind(2, static_cast<std::int64_t>(home.station));
    if (find.Step())
        number = find.Integer(0);
    return find.GetResult();
}

Result prepare(SqliteDatabase &database, const RecordHome &home)
{
    std::int64_t number = 0;
    Result result = database.Execute(unnumbered);
    if (result)
        result = database.Execute(tables);
    if (result)
        result = findHome(database, home, number);
    if (!result)
        return result;
    SqliteStatement take(database, takeOver);
    take.Bind(1, number);
    take.Bind(2, StoredAlarm::Unclaimed);
    result = take.Run();
    return result ? database.Execute(dropUnnumbered) : result;
}

Result replace(SqliteStatement &s, std::int64_t home, unsigned long node, const StoredAlarm &stored)
{
    const AlarmMemory &memory = stored.memory;
    s.Bind(1, home);
    s.Bind(2, static_cast<std::int64_t>(node));
    s.Bind(3, std::int64_t(memory.isActive));
    s.Bind(4, std::int64_t(memory.isAcked));
    s.Bind(5, std::int64_t(memory.isSuppressed));
    s.Bind(6, std::int64_t(memory.isOutOfService));
    s.Bind(7, memory.shelvedUntil);
    s.Bind(8, memory.changed);
    s.Bind(9, static_cast<std::int64_t>(memory.occurrence));
    s.Bind(10, std::string_view(stored.path));
    s.Bind(11, stored.missingSince);
    s.Bind(12, memory.raised);
    s.Bind(13, memory.acknowledged);
    s.Bind(14, memory.returned);
    s.Bind(15, std::int64_t(memory.isSeen));
    return s.Run();
}

Result remove(SqliteStatement &s, std::int64_t home, unsigned long node)
{
    s.Bind(1, home);
    s.Bind(2, static_cast<std::int64_t>(node));
    return s.Run();
}

StoredAlarm read(const SqliteStatement &s)
{
    StoredAlarm stored;
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
    memory.raised = s.Integer(10);
    memory.acknowledged = s.Integer(11);
    memory.returned = s.Integer(12);
    memory.isSeen = s.Integer(13) != 0;
    return stored;
}

} // namespace

// What a removed file cannot be read for is known to the alarms themselves, except of those that
// are not in the project now: it is not worth waiting for.
SqliteAlarmStates::SqliteAlarmStates(const std::string &file, RecordHome home)
    : SqliteStore<AlarmStateStore>(
          file, {currentVersion,
                 [home](SqliteDatabase &database, std::int64_t) { return prepare(database, home); },
                 SqliteStoreFile::Former::Helpful}),
      m_home(std::move(home))
{
}

Result SqliteAlarmStates::Load(Memories &memories, unsigned long &lastOccurrence)
{
    SqliteStatement numbers(m_file.Database(), "SELECT last_occurrence FROM numbers");
    if (numbers.Step())
        lastOccurrence = static_cast<unsigned long>(numbers.Integer(0));
    SqliteStatement s(m_file.Database(), selection);
    s.Bind(1, m_home.project);
    s.Bind(2, static_cast<std::int64_t>(m_home.station));
    while (s.Step())
        memories[static_cast<unsigned long>(s.Integer(0))] = read(s);
    return numbers.GetResult() ? s.GetResult() : numbers.GetResult();
}

Result SqliteAlarmStates::Save(const Memories &memories)
{
    return m_file.Transact([&] { return write(memories); });
}

Result SqliteAlarmStates::write(const Memories &memories)
{
    std::int64_t home = 0;
    const Result found = findHome(m_file.Database(), m_home, home);
    if (!found)
        return found;
    SqliteStatement forget(m_file.Database(), "DELETE FROM states WHERE home = ?1 AND node = ?2");
    SqliteStatement keep(m_file.Database(), replacement);
    std::int64_t last = 0;
    for (const auto &[node, stored] : memories) {
        last = std::max(last, static_cast<std::int64_t>(stored.memory.occurrence));
        const Result written = stored.memory.isBlank() ? remove(forget, home, node)
                                                       : replace(keep, home, node, stored);
        if (!written)
            return written;
    }
    SqliteStatement number(m_file.Database(), numbering);
    number.Bind(1, last);
    return number.Run();
}

} // namespace Nodes
