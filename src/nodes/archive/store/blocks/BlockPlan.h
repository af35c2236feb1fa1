#pragma once

#include "nodes/archive/store/blocks/StoredBlock.h"
#include "nodes/values/Result.h"

namespace Nodes {

class ArchiveRows;

/// Which blocks of a signal answer a question about a span: those that lie in it with aggregates of
/// a grid that is narrow enough, as high as possible, and chunks for the rest. One thread, within a
/// transaction.
class BlockPlan
{
public:
    /// Aggregates of intervals of 2^bits microseconds, at most, are wanted.
    BlockPlan(ArchiveRows &rows, std::int64_t signal, Timestamp from, Timestamp to, int bits)
        : m_rows(rows), m_signal(signal), m_from(from), m_to(to), m_bits(bits)
    {
    }

    /// By time. Chunks at the ends may reach beyond the span.
    [[nodiscard]] Result Make(StoredBlocks &blocks);
    /// What stands below a block that cannot be read.
    [[nodiscard]] Result MakeBelow(const StoredBlock &block, StoredBlocks &blocks);

private:
    [[nodiscard]] Result collect(int height, Timestamp from, Timestamp to, StoredBlocks &blocks);
    bool isFitting(const StoredBlock &block) const;

    ArchiveRows &m_rows;
    const std::int64_t m_signal;
    const Timestamp m_from;
    const Timestamp m_to;
    const int m_bits;
};

} // namespace Nodes
