#pragma once

#include "nodes/NodesExport.h"
#include "nodes/journal/JournalQuery.h"
#include "nodes/values/Result.h"

#include <functional>
#include <memory>
#include <vector>

namespace Nodes {

class JournalSearch;

/// Reads the journal on a connection of its own, for a thread that asks more than once: a list that
/// pages, an export. Nothing it does holds up the writer. One thread at a time, except Cancel.
class NODES_EXPORT JournalReader
{
public:
    /// The link to a source's node; empty for a source of another project or station.
    using Resolver = std::function<NodeLink(const RecordSource &)>;

    JournalReader(std::unique_ptr<JournalSearch> search, Resolver resolver);
    ~JournalReader();
    JournalReader(const JournalReader &) = delete;
    JournalReader &operator=(const JournalReader &) = delete;

    /// Entries as far as they are in the store. Cancelled, and no entries, after Cancel.
    [[nodiscard]] Result Query(const JournalQuery &query, std::vector<BasicEvent> &events);
    /// See EventJournal::Verify. May take long.
    [[nodiscard]] Result Verify();
    /// Ends the call that is under way, if any, soon. Any thread.
    void Cancel();

private:
    const std::unique_ptr<JournalSearch> m_search;
    const Resolver m_resolver;
};

} // namespace Nodes
