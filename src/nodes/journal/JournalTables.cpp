#include "nodes/journal/JournalTables.h"

#include "nodes/storage/SqliteStatement.h"

namespace Nodes {

namespace {

constexpr std::int64_t currentVersion = 2;

constexpr const char *newTables = R"(
CREATE TABLE events (
    id INTEGER PRIMARY KEY, key INTEGER NOT NULL UNIQUE, time INTEGER NOT NULL,
    level INTEGER NOT NULL, type INTEGER NOT NULL, text TEXT NOT NULL, source TEXT NOT NULL,
    node INTEGER NOT NULL, user TEXT NOT NULL, old_value TEXT NOT NULL, new_value TEXT NOT NULL,
    alarm_state INTEGER NOT NULL, priority INTEGER NOT NULL, occurrence INTEGER NOT NULL,
    hash BLOB NOT NULL, version INTEGER NOT NULL DEFAULT 1, origin INTEGER NOT NULL DEFAULT 0);
CREATE INDEX events_time ON events (time);
CREATE TABLE head (one INTEGER PRIMARY KEY CHECK (one = 1), id INTEGER NOT NULL,
    hash BLOB NOT NULL))";

constexpr const char *toSecond = R"(
ALTER TABLE events ADD COLUMN version INTEGER NOT NULL DEFAULT 1;
ALTER TABLE events ADD COLUMN origin INTEGER NOT NULL DEFAULT 0)";

constexpr const char *sinceSecond = R"(
CREATE INDEX events_origin ON events (origin, time) WHERE origin > 0;
CREATE TABLE sources (
    id INTEGER PRIMARY KEY, project TEXT NOT NULL, station INTEGER NOT NULL,
    station_name TEXT NOT NULL, node INTEGER NOT NULL, name TEXT NOT NULL,
    UNIQUE (node, name, project, station, station_name));
CREATE INDEX sources_name ON sources (name);
CREATE TABLE anchor (one INTEGER PRIMARY KEY CHECK (one = 1), id INTEGER NOT NULL,
    hash BLOB NOT NULL, count INTEGER NOT NULL, time INTEGER NOT NULL, reason TEXT NOT NULL,
    until INTEGER NOT NULL);
CREATE TABLE border (one INTEGER PRIMARY KEY CHECK (one = 1), id INTEGER NOT NULL);
INSERT INTO border SELECT 1, coalesce(max(id), 0) FROM events)";

Result prepare(SqliteDatabase &database, std::int64_t found)
{
    const Result result = database.Execute(found == 0 ? newTables : toSecond);
    return result ? database.Execute(sinceSecond) : result;
}

} // namespace

SqliteStoreFile::Schema JournalTables::Schema()
{
    return {currentVersion, &prepare, SqliteStoreFile::Former::Vital};
}

JournalRow JournalTables::ReadRow(const SqliteStatement &s)
{
    JournalRow row;
    BasicEvent &e = row.event;
    e.id = static_cast<unsigned long>(s.Integer(0));
    row.key = static_cast<std::uint64_t>(s.Integer(1));
    e.time = s.Integer(2);
    e.level = EventLevel(s.Integer(3));
    e.type = EventType(s.Integer(4));
    e.text = s.Bytes(5);
    row.source.name = s.Bytes(6);
    row.source.node = static_cast<unsigned long>(s.Integer(7));
    e.user = s.Bytes(8);
    e.oldValue = s.Bytes(9);
    e.newValue = s.Bytes(10);
    e.alarmState = AlarmState(s.Integer(11));
    e.priority = static_cast<int>(s.Integer(12));
    e.occurrence = static_cast<unsigned long>(s.Integer(13));
    row.version = static_cast<std::uint32_t>(s.Integer(15));
    return row;
}

Result JournalTables::ReadLink(SqliteDatabase &database, const char *table, Link &link)
{
    SqliteStatement s(database, std::string("SELECT id, hash FROM ") + table);
    link = {0, FirstHash()};
    if (s.Step())
        link = {static_cast<std::uint64_t>(s.Integer(0)), s.Bytes(1)};
    return s.GetResult();
}

} // namespace Nodes
