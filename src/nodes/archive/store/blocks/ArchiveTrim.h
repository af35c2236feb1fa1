#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/ArchiveRetention.h"
#include "nodes/archive/store/blocks/BlockTree.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace Nodes {

/// Takes out of an archive what its retention lets go, chunk by chunk, the oldest first. What is in
/// the log stays until it is packed. One thread, each step within a transaction.
class NODES_EXPORT ArchiveTrim
{
public:
    explicit ArchiveTrim(ArchiveTables &tables) : m_tables(tables), m_tree(tables) {}

    /// The next step of a round through all signals, or the first of a new one; `hasMore`: the
    /// round goes on. `now` is wall time.
    [[nodiscard]] Result Step(const ArchiveRetentionRules &rules, Timestamp now, bool &hasMore);
    /// The next step begins a round.
    void Restart() { m_isUnderWay = false; }

private:
    using Oldest = std::pair<Timestamp, std::int64_t>; // last of the oldest chunk, signal

    [[nodiscard]] Result begin();
    [[nodiscard]] Result trimNext(const ArchiveRetentionRules &rules, Timestamp now);
    [[nodiscard]] Result eraseOldest(std::int64_t signal, Timestamp before, std::uint64_t excess,
                                     std::size_t &erased);
    [[nodiscard]] Result gatherOldest();
    [[nodiscard]] Result pushOldest(std::int64_t signal);
    [[nodiscard]] Result trimWhole(std::uint64_t most);

    ArchiveTables &m_tables;
    BlockTree m_tree;
    bool m_isUnderWay = false;
    std::vector<StoredSignal> m_signals;
    std::size_t m_next = 0;          // of the signals
    std::uint64_t m_whole = 0;       // bytes of those that were looked at
    std::uint64_t m_erasedBytes = 0; // by the last erasure
    std::vector<Oldest> m_oldest;    // a heap, the oldest on top
    bool m_isGathered = false;
};

} // namespace Nodes
