#pragma once

#include "nodes/journal/JournalSearch.h"
#include "nodes/journal/JournalSelection.h"
#include "nodes/storage/SqliteDatabase.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <string>

namespace Nodes {

/// Reads a journal in SQLite on a connection of its own, which is made anew when another file
/// stands in the place.
class SqliteJournalSearch : public JournalSearch
{
public:
    explicit SqliteJournalSearch(std::string file) : m_file(std::move(file)) {}

    [[nodiscard]] Result Find(const JournalQuery &query, std::vector<JournalRow> &rows) override;
    [[nodiscard]] Result Verify() override;
    void Cancel() override { m_isCancelled = true; }

private:
    template <class Work> Result read(Work work);
    [[nodiscard]] Result open();
    [[nodiscard]] Result find(const JournalQuery &query, std::vector<JournalRow> &rows);
    [[nodiscard]] Result findOrigins(const JournalQuery &query, JournalSelection::Origins &origins);
    [[nodiscard]] Result readSource(std::int64_t origin, RecordSource &source);
    [[nodiscard]] Result verify();
    [[nodiscard]] Result verifyRows(std::uint64_t &lastId, std::string &lastHash);

    const std::string m_file;
    SqliteDatabase m_database;
    std::map<std::int64_t, RecordSource> m_sources; // by their numbers
    std::atomic<bool> m_isCancelled{false};
};

} // namespace Nodes
