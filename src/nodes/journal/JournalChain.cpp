#include "nodes/journal/JournalChain.h"

#include "nodes/journal/JournalTables.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <limits>

namespace Nodes {

Result JournalChain::CheckAll(JournalProof &proof, const JournalSearch::Progress &progress)
{
    constexpr auto all = std::uint64_t(std::numeric_limits<std::int64_t>::max());
    constexpr std::uint64_t step = 20000;
    Result result;
    for (std::uint64_t before = UINT64_MAX; result && proof.GetLast().id != before;) {
        before = proof.GetLast().id;
        if (progress && !progress(before))
            return Result(Result::Cancelled, "stopped at row " + std::to_string(before));
        result = Check(proof, all, step);
    }
    return result;
}

Result JournalChain::Check(JournalProof &proof, std::uint64_t until, std::uint64_t limit)
{
    SqliteStatement statement(m_database, std::string(JournalTables::Columns) +
                                              " WHERE id > ?1 AND id <= ?2 ORDER BY id LIMIT ?3");
    statement.Bind(1, static_cast<std::int64_t>(proof.GetLast().id));
    statement.Bind(2, static_cast<std::int64_t>(until));
    statement.Bind(3, static_cast<std::int64_t>(limit));
    while (statement.Step()) {
        JournalRow row = JournalTables::ReadRow(statement);
        Result result = m_sources.Read(statement.Integer(JournalTables::OriginColumn), row.source);
        if (result)
            result = proof.Take(row, statement.Bytes(JournalTables::HashColumn));
        if (!result)
            return result;
    }
    const Result read = statement.GetResult();
    return !read && m_database.IsDamaged()
               ? JournalProof::Broken("row " + std::to_string(proof.GetLast().id + 1) + ": " +
                                      read.GetDetail())
               : read;
}

} // namespace Nodes
