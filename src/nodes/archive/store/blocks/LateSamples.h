#pragma once

#include "nodes/archive/store/blocks/BlockTree.h"

#include <utility>
#include <vector>

namespace Nodes {

/// Puts samples where chunks are already. One thread, within a transaction.
class LateSamples
{
public:
    explicit LateSamples(ArchiveTables &tables) : m_tables(tables), m_tree(tables) {}

    /// Samples that ascend, up to the signal's sealedTo. Of times that are there already the
    /// stored ones stay. A chunk on the way that is damaged is put aside.
    [[nodiscard]] Result Insert(const StoredSignal &signal, const SampleRun &late);

private:
    /// Where the next samples go.
    struct Place
    {
        StoredBlocks chunk; ///< the one they are added to; none: they make chunks of their own
        std::size_t count = 0;
    };

    [[nodiscard]] Result findPlace(const StoredSignal &signal, const SampleRun &late,
                                   std::size_t begin, Place &place);
    [[nodiscard]] Result readChunk(const StoredBlock &chunk, SampleRun &run);
    [[nodiscard]] Result insert(const StoredSignal &signal, const SampleRun &late,
                                std::size_t begin, const Place &place);

    [[nodiscard]] Result renew(std::int64_t signal);

    using Span = std::pair<Timestamp, Timestamp>;

    ArchiveTables &m_tables;
    BlockTree m_tree;
    std::vector<Span> m_changed; // by time
};

} // namespace Nodes
