#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Nodes {

class SqliteDatabase;
class TextFilter;

/// Where in a journal in SQLite a text may stand, so that a search need not read all of it: the
/// rows in blocks, in the order they were stored, each with its times and a TextFilter. It follows
/// from the rows, proves nothing, and rows it does not have yet are read as ever. The file's
/// version stays: programs that know nothing of the table leave it alone. One thread at a time.
class NODES_EXPORT JournalTextIndex
{
public:
    static constexpr std::uint64_t BlockRows = 1024;
    /// Rows without a block that are worth a transaction.
    static constexpr std::uint64_t WorthRows = 4 * BlockRows;

    /// Times, `end` exclusive.
    struct Span
    {
        Timestamp begin = 0;
        Timestamp end = 0;
    };

    explicit JournalTextIndex(SqliteDatabase &database) : m_database(database) {}

    /// Whether there are as many rows without a block.
    [[nodiscard]] Result IsDue(bool &isDue);
    /// Makes the next blocks, eight at most, and drops those whose rows retention took; in a
    /// transaction.
    [[nodiscard]] Result Extend();
    /// All that may hold the text within `whole`, by time, none touching another.
    [[nodiscard]] Result Narrow(const std::string &text, const Span &whole,
                                std::vector<Span> &spans);

private:
    [[nodiscard]] Result addBlock(std::uint64_t &last, bool &isFull);
    [[nodiscard]] Result store(std::uint64_t last, const Span &times, const TextFilter &filter);
    /// Of the last block; 0 without one, and 0 without the table.
    [[nodiscard]] Result readLast(std::uint64_t &last, bool &isThere);
    /// Rows behind the last block, and their times.
    [[nodiscard]] Result readRest(std::uint64_t last, std::int64_t most, std::int64_t &count,
                                  Span &times);

    SqliteDatabase &m_database;
};

} // namespace Nodes
