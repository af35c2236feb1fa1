#include "nodes/alarms/state/SqliteAlarmStates.h"

#include "nodes/alarms/state/AlarmStateColumns.h"
#include "nodes/storage/SqliteStatement.h"

#include <algorithm>
#include <utility>

namespace Nodes {

namespace {

constexpr std::int64_t currentVersion = 2;

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

// Of the first version.
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

Result prepareFirst(SqliteDatabase &database, const RecordHome &home)
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

Result prepare(SqliteDatabase &database, const RecordHome &home, std::int64_t found)
{
    const Result first = found == 0 ? prepareFirst(database, home) : Result();
    return first ? database.Execute(AlarmStateColumns::SecondVersion) : first;
}

Result remove(SqliteStatement &s, std::int64_t home, unsigned long node)
{
    s.Bind(1, home);
    s.Bind(2, static_cast<std::int64_t>(node));
    return s.Run();
}

} // namespace

// What a removed file cannot be read for is known to the alarms themselves, except of those that
// are not in the project now: it is not worth waiting for.
SqliteAlarmStates::SqliteAlarmStates(const std::string &file, RecordHome home)
    : SqliteStore<AlarmStateStore>(file, {currentVersion,
                                          [home](SqliteDatabase &database, std::int64_t found) {
                                              return prepare(database, home, found);
                                          },
                                          SqliteStoreFile::Former::Helpful}),
      m_home(std::move(home))
{
}

Result SqliteAlarmStates::Load(Memories &memories, unsigned long &lastOccurrence)
{
    SqliteStatement numbers(m_file.Database(), "SELECT last_occurrence FROM numbers");
    if (numbers.Step())
        lastOccurrence = static_cast<unsigned long>(numbers.Integer(0));
    SqliteStatement s(m_file.Database(), AlarmStateColumns::Selection());
    s.Bind(1, m_home.project);
    s.Bind(2, static_cast<std::int64_t>(m_home.station));
    while (s.Step()) {
        unsigned long node = 0;
        const StoredAlarm stored = AlarmStateColumns::Read(s, node);
        memories[node] = stored;
    }
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
    SqliteStatement keep(m_file.Database(), AlarmStateColumns::Replacement());
    std::int64_t last = 0;
    for (const auto &[node, stored] : memories) {
        last = std::max(last, static_cast<std::int64_t>(stored.memory.occurrence));
        if (!stored.memory.isBlank())
            AlarmStateColumns::Bind(keep, home, node, stored);
        const Result written = stored.memory.isBlank() ? remove(forget, home, node) : keep.Run();
        if (!written)
            return written;
    }
    SqliteStatement number(m_file.Database(), numbering);
    number.Bind(1, last);
    return number.Run();
}

} // namespace Nodes
