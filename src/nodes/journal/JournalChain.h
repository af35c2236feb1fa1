#pragma once

#include "nodes/journal/JournalAccount.h"
#include "nodes/journal/JournalSearch.h"
#include "nodes/journal/JournalSources.h"
#include "nodes/journal/JournalTables.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace Nodes {

/// Goes over the rows of a journal in SQLite and proves that they are as they were written.
class JournalChain
{
public:
    using Link = JournalTables::Link;

    explicit JournalChain(SqliteDatabase &database) : m_database(database), m_sources(database) {}

    /// Rows behind `last` up to row `until`, at most `limit`; `last` is moved to the last one that
    /// fits. Failed names the first one that does not.
    [[nodiscard]] Result Check(Link &last, std::uint64_t until, std::uint64_t limit);
    /// The same up to the end, with all that is to be proved besides; see JournalSearch::Verify.
    [[nodiscard]] Result CheckAll(Link &last, const std::vector<Link> &receipts,
                                  const JournalSearch::Progress &progress);
    /// The last rows that the entries met so far say were taken by retention.
    const std::optional<JournalAccount> &GetAccount() const { return m_account; }

    static Result Broken(const std::string &where);

private:
    SqliteDatabase &m_database;
    JournalSources m_sources;
    std::optional<JournalAccount> m_account;
};

} // namespace Nodes
