#include "nodes/storage/postgresql/PostgresProduct.h"

#include "nodes/storage/postgresql/PostgresConnection.h"
#include "nodes/storage/postgresql/PostgresParameters.h"

namespace Nodes {

namespace {

Result failure(const PostgresConnection &connection, const std::string &what)
{
    const PostgresLocation &location = connection.GetLocation();
    return Result(Result::StorageError,
                  location.GetShown() + ": schema " + location.GetSchema() + ": " + what);
}

} // namespace

/// `found`: 0 when there is no such schema, or nothing is in it.
Result PostgresProduct::find(PostgresConnection &connection, bool &hasSchema,
                             std::int64_t &found) const
{
    const std::string &schema = connection.GetLocation().GetSchema();
    PostgresAnswer answer;
    Result result = connection.Query(R"(
SELECT to_regnamespace(quote_ident($1)) IS NOT NULL,
       to_regclass(quote_ident($1) || '.version') IS NOT NULL,
       EXISTS (SELECT FROM pg_class WHERE relnamespace = to_regnamespace(quote_ident($1))))",
                                     PostgresParameters().Add(std::string_view(schema)), answer);
    if (!result)
        return result;
    hasSchema = answer.Integer(0, 0) != 0;
    found = 0;
    if (answer.Integer(0, 1) == 0)
        return answer.Integer(0, 2) == 0
                   ? result
                   : failure(connection, "holds something else; name another one in the location");
    result = connection.Execute("SELECT version, product FROM version", &answer);
    if (result && (answer.IsEmpty() || answer.Text(0, 1) != name))
        return failure(connection, "is of another program; name another one in the location");
    if (result)
        found = answer.Integer(0, 0);
    if (found > version)
        return failure(connection, "written by a later version of the program");
    return result;
}

Result PostgresProduct::make(PostgresConnection &connection, bool hasSchema) const
{
    const std::string &schema = connection.GetLocation().GetSchema();
    Result result;
    if (!hasSchema)
        result = connection.Execute("CREATE SCHEMA \"" + schema + "\"");
    if (result)
        result =
            connection.Execute("CREATE TABLE version (one boolean PRIMARY KEY DEFAULT true "
                               "CHECK (one), version integer NOT NULL, product text NOT NULL)");
    if (result)
        result = connection.Execute(tables);
    if (result)
        result = connection.Query("INSERT INTO version (version, product) VALUES ($1, $2)",
                                  PostgresParameters().Add(version).Add(std::string_view(name)));
    return result;
}

Result PostgresProduct::Prepare(PostgresConnection &connection) const
{
    bool hasSchema = false;
    std::int64_t found = 0;
    const Result result = find(connection, hasSchema, found);
    if (!result || found == version)
        return result;
    return connection.Transact("BEGIN",
                               [&](const PostgresAnswer &) { return make(connection, hasSchema); });
}

Result PostgresProduct::Drop(PostgresConnection &connection, const char *tableNames) const
{
    const Result result = connection.Execute(std::string("DROP TABLE version, ") + tableNames);
    // Somebody else's it may be, or hold other things.
    if (result)
        (void)connection.Execute("DROP SCHEMA \"" + connection.GetLocation().GetSchema() + "\"");
    return result;
}

Result PostgresProduct::Check(PostgresConnection &connection) const
{
    bool hasSchema = false;
    std::int64_t found = 0;
    const Result result = find(connection, hasSchema, found);
    if (result && found == 0)
        return Result(Result::NotFound, connection.GetLocation().GetShown() + ": schema " +
                                            connection.GetLocation().GetSchema() +
                                            ": there is no " + noun);
    return result;
}

} // namespace Nodes
