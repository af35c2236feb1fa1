#pragma once

#include "nodes/archive/store/SampleRun.h"
#include "nodes/archive/store/blocks/StoredBlock.h"
#include "nodes/values/Result.h"

#include <cstddef>

namespace Nodes {

class ArchiveRows;
class ArchiveTables;
struct Pyramid;

/// Chunks of samples and the pyramid above them: each chunk that is large enough has its aggregates
/// (height 1), and each `Fan` or so of one height have theirs, of a grid as much wider. The newest
/// ones of a height wait until they are enough, so a block is mostly written once. A question about
/// a span needs the few blocks of the height that suits it, and at its ends lower ones.
/// One thread, within a transaction.
class BlockTree
{
public:
    static constexpr std::size_t Fan = 16;
    static constexpr std::size_t FullChunk = 4096; ///< samples
    static constexpr std::size_t LeastAggregated = 1024;
    /// A chunk of longer texts has fewer samples, so that none is too long to be read.
    static constexpr std::size_t MostTextBytes = 4u << 20;

    explicit BlockTree(ArchiveTables &tables) : m_tables(tables) {}

    /// A chunk of samples that ascend, and its aggregates; several where texts are long.
    [[nodiscard]] Result PutChunk(std::int64_t signal, const SampleRun &run);
    /// Those alone, of a chunk that is stored.
    [[nodiscard]] Result PutAggregates(StoredBlock chunk, const SampleRun &run);
    /// Chunks of at most `most` samples, of about one size.
    [[nodiscard]] Result PutChunks(std::int64_t signal, const SampleRun &run, std::size_t most);
    [[nodiscard]] Result EraseChunk(const StoredBlock &chunk);
    /// Makes what stands above chunks that came or went within [from, to] anew, once they have.
    [[nodiscard]] Result Renew(std::int64_t signal, Timestamp from, Timestamp to);

    /// The aggregates over those of `children`, of one signal, height and by time.
    /// ParseError when one cannot be read.
    [[nodiscard]] static Result Join(ArchiveRows &rows, const StoredBlocks &children,
                                     Pyramid &pyramid);

private:
    /// What is looked at of one height.
    struct Zone
    {
        Timestamp from;
        Timestamp to;
        bool isEnd = false; ///< nothing of the height above is later
    };

    [[nodiscard]] Result findZone(std::int64_t signal, int height, Zone &zone,
                                  StoredBlocks &parents);
    [[nodiscard]] Result regroup(std::int64_t signal, int height, Zone &zone, bool &isChanged);
    [[nodiscard]] Result putPyramid(StoredBlock block, const Pyramid &pyramid);
    [[nodiscard]] Result putParent(const StoredBlocks &children);

    ArchiveTables &m_tables;
};

} // namespace Nodes
