#include "nodes/journal/JournalChain.h"

#include "nodes/storage/SqliteStatement.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Nodes {

Result JournalChain::Broken(const std::string &where)
{
    return Result(Result::Failed, "journal chain broken at " + where);
}

Result JournalChain::CheckAll(Link &last, const std::vector<Link> &receipts,
                              const JournalSearch::Progress &progress)
{
    constexpr auto all = std::uint64_t(std::numeric_limits<std::int64_t>::max());
    constexpr std::uint64_t step = 20000;
    std::vector<Link> marks = receipts;
    std::sort(marks.begin(), marks.end(), [](const Link &a, const Link &b) { return a.id < b.id; });
    const auto anchor = last.id;
    Result result;
    auto mark = std::find_if(marks.begin(), marks.end(),
                             [&](const Link &receipt) { return receipt.id >= anchor; });
    for (std::uint64_t before = UINT64_MAX; result && last.id != before;) {
        while (mark != marks.end() && mark->id == last.id) {
            if (mark->hash != last.hash)
                return Broken("row " + std::to_string(last.id) + ": the receipt has another hash");
            ++mark;
        }
        if (progress && !progress(last.id))
            return Result(Result::Cancelled, "stopped at row " + std::to_string(last.id));
        before = last.id;
        result = Check(last, mark != marks.end() ? mark->id : all, step);
    }
    if (result && mark != marks.end())
        return Broken("the end: row " + std::to_string(mark->id) +
                      " of the receipt is not there, the last row is " + std::to_string(last.id));
    return result;
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
    const Result read = statement.GetResult();
    return !read && m_database.IsDamaged()
               ? Broken("row " + std::to_string(last.id + 1) + ": " + read.GetDetail())
               : read;
}

} // namespace Nodes
