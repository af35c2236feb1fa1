#pragma once

#include "nodes/journal/JournalLink.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/journal/JournalRow.h"
#include "nodes/values/Result.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Nodes {

/// Where the rows of a journal begin and end.
struct JournalEnds
{
    JournalLink anchor; ///< last row that retention took; row 0 without one
    JournalLink head;   ///< last row; that of the anchor when there is none behind it
};

/// Reads a journal's store beside its writer, which it never holds up, nor is held up by. One
/// thread at a time, except Cancel.
class JournalSearch
{
public:
    virtual ~JournalSearch() = default;

    /// A page of rows, in the order of JournalKey. Cancelled after Cancel.
    [[nodiscard]] virtual Result Find(const JournalQuery &query, std::vector<JournalRow> &rows) = 0;
    /// Called now and then with the number of the row reached; false ends the work: Cancelled.
    using Progress = std::function<bool(std::uint64_t row)>;
    /// See EventJournal::Verify. A row of `receipts` that is there has to have that hash; one that
    /// retention took is proved by the chain behind it only and passed over.
    [[nodiscard]] virtual Result Verify(const std::vector<JournalLink> &receipts,
                                        const Progress &progress) = 0;

    [[nodiscard]] virtual Result ReadEnds(JournalEnds &ends) = 0;
    /// First and last number of the rows of that time; `end` is exclusive, 0: no end. NotFound
    /// without any.
    [[nodiscard]] virtual Result FindSpan(Timestamp begin, Timestamp end, std::uint64_t &first,
                                          std::uint64_t &last) = 0;
    /// False ends the visit without a failure.
    using Visitor = std::function<bool(const JournalRow &row, const std::string &previous,
                                       const std::string &hash)>;
    /// Rows from `first` to `last` in the order of the chain, with the hash before each and its
    /// own, as they stand there: nothing is proved.
    [[nodiscard]] virtual Result VisitRows(std::uint64_t first, std::uint64_t last,
                                           const Visitor &visitor) = 0;
    /// Has the call that is under way, if any, end soon. Any thread.
    virtual void Cancel() = 0;
};

} // namespace Nodes
