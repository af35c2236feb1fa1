#pragma once

#include "nodes/journal/JournalProof.h"
#include "nodes/journal/JournalSources.h"

#include <cstdint>

namespace Nodes {

class SqliteDatabase;

/// Goes over the rows of a journal in SQLite and proves that they are as they were written.
class JournalChain
{
public:
    explicit JournalChain(SqliteDatabase &database) : m_database(database), m_sources(database) {}

    /// Rows behind what is proved up to row `until`, at most `limit`. Failed names the first one
    /// that does not fit or cannot be read.
    [[nodiscard]] Result Check(JournalProof &proof, std::uint64_t until, std::uint64_t limit);
    /// The same up to the end.
    [[nodiscard]] Result CheckAll(JournalProof &proof, const JournalSearch::Progress &progress);

private:
    SqliteDatabase &m_database;
    JournalSources m_sources;
};

} // namespace Nodes
