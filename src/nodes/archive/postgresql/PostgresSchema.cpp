#include "nodes/archive/postgresql/PostgresSchema.h"

#include "nodes/archive/postgresql/PostgresConnection.h"

#include <cstdint>

namespace Nodes {

namespace {

constexpr std::int64_t currentVersion = 1;

// Bytes are packed already: the server is not to try it again. Rows that are changed in place leave
// room in their pages, and tables that are emptied as fast as they fill are cleaned often.
constexpr const char *newTables = R"(
CREATE TABLE version (
    one boolean PRIMARY KEY DEFAULT true CHECK (one), version integer NOT NULL,
    product text NOT NULL);
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

constexpr const char *product = "operator station: archive";

Result failure(const PostgresConnection &connection, const std::string &what)
{
    const PostgresLocation &location = connection.GetLocation();
    return Result(Result::StorageError,
                  location.GetShown() + ": schema " + location.GetSchema() + ": " + what);
}

/// `version`: 0 when there is no such schema, or nothing is in it.
Result findVersion(PostgresConnection &connection, bool &hasSchema, std::int64_t &version)
{
    const std::string &schema = connection.GetLocation().GetSchema();
    PostgresAnswer found;
    Result result = connection.Query(R"(
SELECT to_regnamespace(quote_ident($1)) IS NOT NULL,
       to_regclass(quote_ident($1) || '.version') IS NOT NULL,
       EXISTS (SELECT FROM pg_class WHERE relnamespace = to_regnamespace(quote_ident($1))))",
                                     PostgresParameters().Add(std::string_view(schema)), found);
    if (!result)
        return result;
    hasSchema = found.Integer(0, 0) != 0;
    version = 0;
    if (found.Integer(0, 1) == 0)
        return found.Integer(0, 2) == 0
                   ? result
                   : failure(connection, "holds something else; name another one in the location");
    result = connection.Execute("SELECT version, product FROM version", &found);
    if (result && (found.IsEmpty() || found.Text(0, 1) != product))
        return failure(connection, "is of another program; name another one in the location");
    if (result)
        version = found.Integer(0, 0);
    if (version > currentVersion)
        return failure(connection, "written by a later version of the program");
    return result;
}

Result makeTables(PostgresConnection &connection, bool hasSchema)
{
    const std::string &schema = connection.GetLocation().GetSchema();
    Result result;
    if (!hasSchema)
        result = connection.Execute("CREATE SCHEMA \"" + schema + "\"");
    if (result)
        result = connection.Execute(newTables);
    if (result)
        result = connection.Query("INSERT INTO version (version, product) VALUES ($1, $2)",
                                  PostgresParameters().Add(currentVersion).Add(product));
    return result;
}

} // namespace

Result PostgresSchema::Prepare(PostgresConnection &connection)
{
    bool hasSchema = false;
    std::int64_t version = 0;
    const Result result = findVersion(connection, hasSchema, version);
    if (!result || version == currentVersion)
        return result;
    return connection.Transact(
        "BEGIN", [&](const PostgresAnswer &) { return makeTables(connection, hasSchema); });
}

Result PostgresSchema::Drop(PostgresConnection &connection)
{
    const Result result =
        connection.Execute("DROP TABLE version, signals, blocks, log, keys, odd, turn");
    // Somebody else's it may be, or hold other things.
    if (result)
        (void)connection.Execute("DROP SCHEMA \"" + connection.GetLocation().GetSchema() + "\"");
    return result;
}

Result PostgresSchema::Check(PostgresConnection &connection)
{
    bool hasSchema = false;
    std::int64_t version = 0;
    const Result result = findVersion(connection, hasSchema, version);
    if (result && version == 0)
        return Result(Result::NotFound, connection.GetLocation().GetShown() + ": schema " +
                                            connection.GetLocation().GetSchema() +
                                            ": there is no archive");
    return result;
}

} // namespace Nodes
