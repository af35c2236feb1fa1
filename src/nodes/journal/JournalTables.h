#pragma once

#include "nodes/journal/JournalLink.h"
#include "nodes/journal/JournalRow.h"
#include "nodes/storage/SqliteStoreFile.h"

#include <cstdint>
#include <string>

namespace Nodes {

class SqliteDatabase;
class SqliteStatement;

/// The tables of a journal in SQLite:
/// - events: the rows. `origin` is a number of `sources`; 0 in rows of the first version, which
///   have name and node of their source in `source` and `node` instead.
/// - sources: what rows are about, each once.
/// - head: number and hash of the last row, so that a cut-off end shows.
/// - anchor: number and hash of the last row that retention took, so that a cut-off beginning
/// shows.
/// - border: number of the last row of the first version.
namespace JournalTables {

SqliteStoreFile::Schema Schema();

/// What rows are read with; they follow FROM with whatever condition.
constexpr const char *Columns =
    "SELECT id, key, time, level, type, text, source, node, user, old_value, new_value, "
    "alarm_state, priority, occurrence, hash, version, origin FROM events";
constexpr int HashColumn = 14;
constexpr int OriginColumn = 16;

/// A row but for its source, which JournalSources has by the number in OriginColumn.
JournalRow ReadRow(const SqliteStatement &statement);

using Link = JournalLink;
/// From `table`, head or anchor; what is before the first row when there is none.
[[nodiscard]] Result ReadLink(SqliteDatabase &database, const char *table, Link &link);

} // namespace JournalTables

} // namespace Nodes
