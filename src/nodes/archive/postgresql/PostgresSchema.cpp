#include "nodes/archive/postgresql/PostgresSchema.h"

#include "nodes/storage/postgresql/PostgresProduct.h"

#include <cstdint>

namespace Nodes {

namespace {

constexpr std::int64_t currentVersion = 1;

// Bytes are packed already: the server is not to try it again. Rows that are changed in place leave
// room in their pages, and tables that are emptied as fast as they fill are cleaned often.
constexpr const char *newTables = R"(
CREATE TABLE signals (
    number bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
    project text NOT NULL, station bigint NOT NULL, node bigint NOT NULL,
    station_name text NOT NULL, name text NOT NULL, unit text NOT NULL,
    sealed_to bigint NOT NULL, generated_from bigint NOT NULL, generated_to bigint NOT NULL,
    UNIQUE (project, station, node)) WITH (fillfactor = 50);
CREATE TABLE blocks (
    id bigint GENERATED ALWAYS AS IDENTITY, signal bigint NOT NULL, height smallint NOT NULL,
    bits smallint NOT NULL, first bigint NOT NULL, last bigint NOT NULL, samples bigint NOT NULL, size bigint NOT NULL,
    bytes bytea NOT NULL, PRIMARY KEY (signal, height, first));
ALTER TABLE blocks ALTER COLUMN bytes SET STORAGE EXTERNAL;
CREATE TABLE log (
    number bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY, bytes bytea NOT NULL)
    WITH (autovacuum_vacuum_scale_factor = 0, autovacuum_vacuum_threshold = 500,
          toast.autovacuum_vacuum_scale_factor = 0, toast.autovacuum_vacuum_threshold = 5000);
ALTER TABLE log ALTER COLUMN bytes SET STORAGE EXTERNAL;
CREATE TABLE keys (first bigint PRIMARY KEY, last bigint NOT NULL) WITH (fillfactor = 50);
CREATE TABLE odd (
    key bigint PRIMARY KEY, bytes bytea NOT NULL, settled boolean NOT NULL DEFAULT false);
CREATE TABLE turn (one boolean PRIMARY KEY DEFAULT true CHECK (one), number bigint NOT NULL)
    WITH (fillfactor = 10);
INSERT INTO turn (number) VALUES (0))";

constexpr PostgresProduct archive{"operator station: archive", newTables, currentVersion,
                                  "archive"};

} // namespace

Result PostgresSchema::Prepare(PostgresConnection &connection)
{
    return archive.Prepare(connection);
}

Result PostgresSchema::Drop(PostgresConnection &connection)
{
    return archive.Drop(connection, "signals, blocks, log, keys, odd, turn");
}

Result PostgresSchema::Check(PostgresConnection &connection)
{
    return archive.Check(connection);
}

} // namespace Nodes
