#pragma once

#include "nodes/archive/store/blocks/BlockTree.h"

namespace Nodes {

/// Packs the tail of a signal into chunks. One thread, within a transaction.
class ChunkSealer
{
public:
    explicit ChunkSealer(ArchiveTables &tables) : m_tables(tables), m_tree(tables) {}

    /// Full chunks of what there is, with the short ones at the end of those sealed before; the
    /// rest stays in the tail. Samples from `before` on stay too. The signal is written.
    [[nodiscard]] Result SealFull(StoredSignal &signal, SampleRun &tail, Timestamp before);
    /// All of the tail before that time. A short chunk is joined with those before it that are
    /// about as short: so even a signal of few samples has each of them written a few times only.
    [[nodiscard]] Result SealAll(StoredSignal &signal, SampleRun &tail, Timestamp before);

private:
    using Rule = bool (*)(std::size_t gathered, std::size_t next);

    [[nodiscard]] Result gatherShort(const StoredSignal &signal, std::size_t gathered, Rule joins,
                                     StoredBlocks &chunks, SampleRun &run);
    [[nodiscard]] Result seal(StoredSignal &signal, const StoredBlocks &replaced,
                              const SampleRun &run);

    ArchiveTables &m_tables;
    BlockTree m_tree;
};

} // namespace Nodes
