#pragma once

#include "nodes/journal/JournalQuery.h"
#include "nodes/journal/JournalRow.h"
#include "nodes/storage/SqliteDatabase.h"

#include <string>
#include <vector>

namespace Nodes {

/// Reads a journal file on a connection of its own while the writer goes on writing: one snapshot
/// for each call. Made for one use, on any thread.
class JournalReader
{
public:
    explicit JournalReader(std::string file) : m_file(std::move(file)) {}

    [[nodiscard]] Result Query(const JournalQuery &query, std::vector<BasicEvent> &events);
    [[nodiscard]] Result Verify();

private:
    [[nodiscard]] Result open();
    [[nodiscard]] Result verifyRows(std::uint64_t &lastId, std::string &lastHash);

    std::string m_file;
    SqliteDatabase m_database;
};

} // namespace Nodes
