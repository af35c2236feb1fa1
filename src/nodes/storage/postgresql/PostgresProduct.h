#pragma once

#include "nodes/values/Result.h"

#include <cstdint>

namespace Nodes {

class PostgresConnection;

/// What this program keeps in a schema of a database: all its tables, among them "version", a row
/// that tells whose they are. A value.
struct PostgresProduct
{
    const char *name;     ///< in the table "version"
    const char *tables;   ///< statements that make them
    std::int64_t version; ///< of these tables
    const char *noun;     ///< "archive", for messages

    /// Makes the schema and its tables, completely or not at all. StorageError, and nothing is
    /// changed, for those of a later version and for a schema that is something else.
    [[nodiscard]] Result Prepare(PostgresConnection &connection) const;
    /// NotFound when there is nothing; StorageError for a later version.
    [[nodiscard]] Result Check(PostgresConnection &connection) const;
    /// Takes these tables away, and the schema if nothing else is in it.
    [[nodiscard]] Result Drop(PostgresConnection &connection, const char *tableNames) const;

private:
    [[nodiscard]] Result find(PostgresConnection &connection, bool &hasSchema,
                              std::int64_t &found) const;
    [[nodiscard]] Result make(PostgresConnection &connection, bool hasSchema) const;
};

} // namespace Nodes
