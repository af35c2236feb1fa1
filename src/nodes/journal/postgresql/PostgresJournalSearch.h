#pragma once

#include "nodes/journal/JournalSearch.h"
#include "nodes/storage/postgresql/PostgresConnection.h"

#include <atomic>
#include <string>

namespace Nodes {

/// Reads a journal in PostgreSQL on a connection of its own, which is made again when it was lost.
/// A role that may only SELECT is enough.
class PostgresJournalSearch : public JournalSearch
{
public:
    explicit PostgresJournalSearch(const std::string &location);

    [[nodiscard]] Result Find(const JournalQuery &query, std::vector<JournalRow> &rows) override;
    [[nodiscard]] Result Verify(const std::vector<JournalLink> &receipts,
                                const Progress &progress) override;
    [[nodiscard]] Result ReadEnds(JournalEnds &ends) override;
    [[nodiscard]] Result FindSpan(Timestamp begin, Timestamp end, std::uint64_t &first,
                                  std::uint64_t &last) override;
    [[nodiscard]] Result VisitRows(std::uint64_t first, std::uint64_t last,
                                   const Visitor &visitor) override;
    /// A statement that runs on the server is waited for.
    void Cancel() override { m_isCancelled = true; }

private:
    /// False ends it without a failure.
    using RowVisitor = std::function<Result(const JournalRow &row, const std::string &hash)>;

    template <class Work> Result read(Work work);
    [[nodiscard]] Result open();
    [[nodiscard]] Result find(const JournalQuery &query, std::vector<JournalRow> &rows);
    [[nodiscard]] Result findOrigins(const JournalQuery &query, std::string &numbers);
    [[nodiscard]] Result visit(std::uint64_t first, std::uint64_t last, const RowVisitor &visitor);
    [[nodiscard]] Result verify(const std::vector<JournalLink> &receipts, const Progress &progress);
    [[nodiscard]] Result hashBefore(std::uint64_t row, std::string &hash);

    PostgresConnection m_connection;
    std::atomic<bool> m_isCancelled{false};
};

} // namespace Nodes
