#pragma once

#include "nodes/journal/JournalRow.h"
#include "nodes/journal/JournalSearch.h"
#include "nodes/storage/postgresql/PostgresAnswer.h"
#include "nodes/storage/postgresql/PostgresProduct.h"

#include <string>

namespace Nodes {

class PostgresConnection;

/// The tables of a journal in PostgreSQL, all in one schema, "journal" unless the location names
/// another:
/// - version: see PostgresProduct;
/// - events: the rows. `packed` is what the hash covers, and what is read; the columns beside it
/// are
///   for finding rows. `origin` is a number of `sources`;
/// - sources: what rows are about, each once;
/// - head: number and hash of the last row, so that a cut-off end shows; whoever writes locks it;
/// - anchor: number and hash of the last row that retention took, so that a cut-off beginning
/// shows.
namespace PostgresJournalTables {

constexpr const char *DefaultSchema = "journal";
const PostgresProduct &Product();

/// A text as its column has it.
std::string TextColumn(std::string_view text);

/// Columns that ReadRow reads; they follow FROM with whatever condition.
constexpr const char *Columns =
    "SELECT id, key, version, packed, hash, time, level, type, username, folded FROM events";
constexpr int HashColumn = 4;
/// Failed, naming the row, when it cannot be understood or its columns are not those of its bytes.
[[nodiscard]] Result ReadRow(const PostgresAnswer &answer, int at, JournalRow &row);

[[nodiscard]] Result ReadEnds(PostgresConnection &connection, JournalEnds &ends);

} // namespace PostgresJournalTables

} // namespace Nodes
