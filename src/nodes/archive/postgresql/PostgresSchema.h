#pragma once

#include "nodes/values/Result.h"

#include <string>

namespace Nodes {

class PostgresConnection;

/// The tables of an archive in PostgreSQL, all in one schema:
/// - version: one row, the version of these tables;
/// - signals: what is archived, numbered; blocks and log name them by these numbers;
/// - blocks: packed samples (height 0) and aggregates over them, by signal, height and time;
/// - log: samples that are not in blocks yet, a row for each transaction;
/// - keys: intervals of keys of the records that were stored;
/// - odd: records that could not be understood;
/// - turn: one row, which every transaction that writes counts up first: so they wait for each
///   other, and one that finds more than its own count knows that somebody else has written.
namespace PostgresSchema {

/// Makes the schema and its tables, or brings those of an earlier version up to date, completely or
/// not at all. StorageError, and nothing is changed, for those of a later version and for a schema
/// that is something else.
[[nodiscard]] Result Prepare(PostgresConnection &connection);
/// Begins a transaction that writes.
constexpr const char *BeginTurn = "BEGIN; UPDATE turn SET number = number + 1 RETURNING number";
/// NotFound when there is no archive; StorageError for one of a later version.
[[nodiscard]] Result Check(PostgresConnection &connection);
/// Takes the tables away with all that is in them, and the schema if nothing else is in it.
[[nodiscard]] Result Drop(PostgresConnection &connection);

} // namespace PostgresSchema

} // namespace Nodes
