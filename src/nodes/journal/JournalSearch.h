#pragma once

#include "nodes/journal/JournalQuery.h"
#include "nodes/journal/JournalRow.h"
#include "nodes/values/Result.h"

#include <vector>

namespace Nodes {

/// Reads a journal's store beside its writer, which it never holds up, nor is held up by. One
/// thread at a time, except Cancel.
class JournalSearch
{
public:
    virtual ~JournalSearch() = default;

    /// A page of rows, in the order of JournalKey. Cancelled after Cancel.
    [[nodiscard]] virtual Result Find(const JournalQuery &query, std::vector<JournalRow> &rows) = 0;
    /// See EventJournal::Verify.
    [[nodiscard]] virtual Result Verify() = 0;
    /// Has the call that is under way, if any, end soon. Any thread.
    virtual void Cancel() = 0;
};

} // namespace Nodes
