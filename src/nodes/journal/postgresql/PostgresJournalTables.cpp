#include "nodes/journal/postgresql/PostgresJournalTables.h"

#include "nodes/journal/JournalProof.h"
#include "nodes/storage/postgresql/PostgresConnection.h"
#include "nodes/storage/postgresql/PostgresParameters.h"
#include "nodes/values/FoldCase.h"

namespace Nodes {

namespace {

constexpr const char *newTables = R"(
CREATE TABLE sources (
    id bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY, project text NOT NULL,
    station bigint NOT NULL, station_name text NOT NULL, node bigint NOT NULL, name text NOT NULL);
CREATE UNIQUE INDEX sources_whole ON sources (node, project, station, md5(name), md5(station_name));
CREATE INDEX sources_name ON sources (md5(name));
CREATE TABLE events (
    id bigint PRIMARY KEY, key bigint NOT NULL UNIQUE, time bigint NOT NULL,
    level smallint NOT NULL, type smallint NOT NULL, username text NOT NULL,
    folded text NOT NULL, origin bigint NOT NULL, version integer NOT NULL,
    packed bytea NOT NULL, hash bytea NOT NULL);
CREATE INDEX events_time ON events (time, id);
CREATE INDEX events_origin ON events (origin, time, id);
CREATE TABLE head (
    one boolean PRIMARY KEY DEFAULT true CHECK (one), id bigint NOT NULL, hash bytea NOT NULL)
    WITH (fillfactor = 10);
CREATE TABLE anchor (
    one boolean PRIMARY KEY DEFAULT true CHECK (one), id bigint NOT NULL, hash bytea NOT NULL,
    count bigint NOT NULL, time bigint NOT NULL, reason text NOT NULL, until bigint NOT NULL)
    WITH (fillfactor = 10);
INSERT INTO head (id, hash) VALUES (0, decode(repeat('00', 32), 'hex')))";

constexpr PostgresProduct product{"operator station: journal", newTables, 1, "journal"};

} // namespace

const PostgresProduct &PostgresJournalTables::Product()
{
    return product;
}

std::string PostgresJournalTables::TextColumn(std::string_view text)
{
    return PostgresParameters().Add(text).GetTexts().front();
}

Result PostgresJournalTables::ReadRow(const PostgresAnswer &answer, int at, JournalRow &row)
{
    const std::int64_t id = answer.Integer(at, 0);
    const Record record{static_cast<std::uint64_t>(answer.Integer(at, 1)),
                        static_cast<std::uint32_t>(answer.Integer(at, 2)), answer.Bytes(at, 3)};
    std::optional<JournalRow> read = UnpackRow(record);
    const Result broken = JournalProof::Broken("row " + std::to_string(id));
    if (!read || PackRow(*read).bytes != record.bytes)
        return broken;
    row = std::move(*read);
    BasicEvent &event = row.event;
    event.id = static_cast<unsigned long>(id);
    const bool isFound =
        event.time == answer.Integer(at, 5) && event.level == answer.Integer(at, 6) &&
        event.type == answer.Integer(at, 7) && TextColumn(event.user) == answer.Text(at, 8) &&
        TextColumn(FoldCase(event.text)) == answer.Text(at, 9);
    return isFound ? Result() : broken;
}

Result PostgresJournalTables::ReadEnds(PostgresConnection &connection, JournalEnds &ends)
{
    ends.anchor = {0, FirstHash()};
    ends.head = ends.anchor;
    PostgresAnswer answer;
    Result result = connection.Execute("SELECT id, hash FROM anchor", &answer);
    if (result && !answer.IsEmpty())
        ends.anchor = {static_cast<std::uint64_t>(answer.Integer(0, 0)), answer.Bytes(0, 1)};
    if (result)
        result = connection.Execute("SELECT id, hash FROM head", &answer);
    if (result && !answer.IsEmpty())
        ends.head = {static_cast<std::uint64_t>(answer.Integer(0, 0)), answer.Bytes(0, 1)};
    return result;
}

} // namespace Nodes
