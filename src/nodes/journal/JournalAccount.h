#pragma once

#include "nodes/journal/JournalTables.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Nodes {

/// What an entry of the journal says about rows that retention takes.
struct JournalAccount
{
    std::uint64_t id = 0; ///< the last one of them
    std::string hash;     ///< of that one, in hexadecimal digits

    static JournalAccount Of(const JournalTables::Link &last);
    /// Nothing when the row is another kind of entry.
    static std::optional<JournalAccount> In(const JournalRow &row);
    /// Makes an entry one that `In` finds it in.
    void PutInto(BasicEvent &entry) const;
    /// Whether all the rows up to the anchor are among them.
    bool Covers(const JournalTables::Link &anchor) const;
};

} // namespace Nodes
