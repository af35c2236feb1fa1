#pragma once

#include "nodes/storage/RecordSource.h"
#include "nodes/values/Result.h"

#include <cstdint>
#include <map>

namespace Nodes {

class SqliteDatabase;

/// What the numbers of sources in a journal's file mean. Each is read once.
class JournalSources
{
public:
    explicit JournalSources(SqliteDatabase &database) : m_database(database) {}

    /// Leaves `source` as it is for number 0: rows of the first version name theirs themselves.
    [[nodiscard]] Result Read(std::int64_t number, RecordSource &source);
    /// Another file stands in the place.
    void Forget() { m_known.clear(); }

private:
    SqliteDatabase &m_database;
    std::map<std::int64_t, RecordSource> m_known;
};

} // namespace Nodes
