#include "nodes/journal/JournalChain.h"

#include "nodes/storage/SqliteStatement.h"

#include <limits>
#include <utility>

namespace Nodes {

Result JournalChain::Broken(const std::string &where)
{
    return Result(Result::Failed, "journal chain broken at " + where);
}

Result JournalChain::CheckAll(Link &last)
{
    constexpr auto all = std::uint64_t(std::numeric_limits<std::int64_t>::max());
    return Check(last, all, all);
}

Result JournalChain::Check(Link &last, std::uint64_t until, std::uint64_t limit)
{
    SqliteStatement statement(m_database, std::string(JournalTables::Columns) +
                                              " WHERE id > ?1 AND id <= ?2 ORDER BY id LIMIT ?3");
    statement.Bind(1, static_cast<std::int64_t>(last.id));
    statement.Bind(2, static_cast<std::int64_t>(until));
    statement.Bind(3, static_cast<std::int64_t>(limit));
    while (statement.Step()) {
        JournalRow row = JournalTables::ReadRow(statement);
        const Result read =
            m_sources.Read(statement.Integer(JournalTables::OriginColumn), row.source);
        if (!read)
            return read;
        const Link next{row.event.id, ChainHash(last.hash, row.event.id, PackRow(row))};
        if (next.id != last.id + 1 || statement.Bytes(JournalTables::HashColumn) != next.hash)
            return Broken("row " + std::to_string(next.id));
        last = next;
        if (std::optional<JournalAccount> account = JournalAccount::In(row))
            m_account = std::move(account);
    }
    return statement.GetResult();
}

} // namespace Nodes
