#pragma once

#include "nodes/journal/JournalSearch.h"
#include "nodes/journal/JournalSelection.h"
#include "nodes/journal/JournalSources.h"
#include "nodes/journal/texts/JournalTextIndex.h"
#include "nodes/storage/SqliteDatabase.h"

#include <atomic>
#include <string>

namespace Nodes {

/// Reads a journal in SQLite on a connection of its own, which is made anew when another file
/// stands in the place.
class SqliteJournalSearch : public JournalSearch
{
public:
    explicit SqliteJournalSearch(std::string file) : m_file(std::move(file)), m_sources(m_database)
    {
    }

    [[nodiscard]] Result Find(const JournalQuery &query, std::vector<JournalRow> &rows) override;
    [[nodiscard]] Result Verify(const std::vector<JournalLink> &receipts,
                                const Progress &progress) override;
    [[nodiscard]] Result ReadEnds(JournalEnds &ends) override;
    [[nodiscard]] Result FindSpan(Timestamp begin, Timestamp end, std::uint64_t &first,
                                  std::uint64_t &last) override;
    [[nodiscard]] Result VisitRows(std::uint64_t first, std::uint64_t last,
                                   const Visitor &visitor) override;
    void Cancel() override { m_isCancelled = true; }

private:
    template <class Work> Result readRemains(Work work);
    template <class Work> Result read(Work work);
    [[nodiscard]] Result open();
    [[nodiscard]] Result find(const JournalQuery &query, std::vector<JournalRow> &rows);
    [[nodiscard]] Result findSpans(const JournalQuery &query,
                                   std::vector<JournalTextIndex::Span> &spans);
    [[nodiscard]] Result readRows(SqliteStatement &statement, std::vector<JournalRow> &rows);
    [[nodiscard]] Result findOrigins(const JournalQuery &query, JournalSelection::Origins &origins);
    [[nodiscard]] Result verify(const std::vector<JournalLink> &receipts, const Progress &progress);
    [[nodiscard]] Result readEnds(JournalEnds &ends);
    [[nodiscard]] Result visit(std::uint64_t first, std::uint64_t last, const Visitor &visitor);

    const std::string m_file;
    SqliteDatabase m_database;
    JournalSources m_sources;
    std::atomic<bool> m_isCancelled{false};
};

} // namespace Nodes
