#pragma once

#include "nodes/journal/JournalRetention.h"
#include "nodes/journal/JournalTables.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Nodes {

/// Takes the oldest rows out of a journal in SQLite, so that the rest can still be proved: first an
/// entry tells which rows go, then they go in small steps, each with the anchor that the next row
/// is chained to. An anchor that no entry accounts for shows as a cut-off beginning. Rows that were
/// tampered with stay. One thread at a time.
class JournalTrim
{
public:
    using Link = JournalTables::Link;

    /// The next rows to go.
    struct Plan
    {
        std::uint64_t first = 0;
        Link last;
        std::string reason; ///< Russian
    };

    static constexpr std::uint64_t LeastKept = 1000;
    static constexpr std::uint64_t MostPlanned = 50000; // told of by one entry
    static constexpr std::size_t StepRows = 500; // so that entries wait for a few milliseconds
    static std::string AgeText(Timestamp age);
    static std::string SizeText(std::uint64_t bytes);
    /// Whether retention takes a row of that time; `isFirst` of those to be taken.
    static bool IsAged(Timestamp time, bool isFirst, Timestamp age, Timestamp now);

    explicit JournalTrim(SqliteDatabase &database) : m_database(database) {}

    /// Nothing while there is not enough to be worth an entry.
    [[nodiscard]] Result MakePlan(const JournalRetention &retention, std::optional<Plan> &plan);
    /// The entry that tells of a plan.
    static BasicEvent EntryOf(const Plan &plan);
    /// In the transaction that stores that entry.
    [[nodiscard]] Result Begin(const Plan &plan);
    /// Whether rows of a plan are still to go.
    [[nodiscard]] Result IsUnderWay(bool &isUnderWay);
    /// Takes some of them, in a transaction.
    [[nodiscard]] Result Step();

private:
    /// Rows there are.
    struct Ends
    {
        std::uint64_t first = 0;
        std::uint64_t last = 0;
    };

    [[nodiscard]] Result findAged(Timestamp age, std::uint64_t &last);
    [[nodiscard]] Result findExcess(std::uint64_t bytes, const Ends &ends, std::uint64_t &last);
    [[nodiscard]] Result readNumber(const char *sql, std::int64_t &number);
    [[nodiscard]] Result readEnds(Ends &ends);

    SqliteDatabase &m_database;
};

} // namespace Nodes
