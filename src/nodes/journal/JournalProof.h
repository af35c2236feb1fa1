#pragma once

#include "nodes/journal/JournalAccount.h"
#include "nodes/journal/JournalLink.h"
#include "nodes/journal/JournalSearch.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Nodes {

/// Proves the rows of a journal one after the other, wherever they come from. One thread.
class JournalProof
{
public:
    /// Goes on behind `last`. Receipts of rows before it are passed over.
    explicit JournalProof(JournalLink last, std::vector<JournalLink> receipts = {});

    /// The row that follows, with the hash that stands with it. Failed names it when it does not
    /// fit, or its receipt does not.
    [[nodiscard]] Result Take(const JournalRow &row, const std::string &hash);
    /// After the last row: all has to end where the journal says so, and an entry has to account
    /// for what retention took.
    [[nodiscard]] Result Finish(const JournalEnds &ends) const;

    /// The last row that fitted.
    const JournalLink &GetLast() const { return m_last; }

    static Result Broken(const std::string &where);

private:
    [[nodiscard]] Result compareReceipts();

    JournalLink m_last;
    std::vector<JournalLink> m_receipts; // those to come, the last one first
    std::optional<JournalAccount> m_account;
    Result m_begun; // how the receipt of the row at which it begins did
};

} // namespace Nodes
