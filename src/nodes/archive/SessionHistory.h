#pragma once

#include "nodes/archive/HistorySource.h"
#include "nodes/values/Quality.h"
#include "nodes/values/SampleTap.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace Nodes {

/// The latest samples of one signal, in memory: at least as many as asked for, at most two blocks
/// more, 24 bytes each. Texts that are no numbers are kept as gaps. Publishers and readers hold
/// each other up for the copying of one block at most.
class NODES_EXPORT SessionHistory : public SampleTap, public HistorySource
{
public:
    explicit SessionHistory(std::size_t capacity);

    void Offer(Timestamp time, const SignalValue &value) override;
    [[nodiscard]] Result Read(HistoryColumnBuilder &into,
                              const std::atomic<bool> &isCancelled) const override;

private:
    struct Kept
    {
        Timestamp time;
        double number;
        Quality quality;
    };
    using Block = std::vector<Kept>;
    using Blocks = std::vector<std::shared_ptr<const Block>>;

    Blocks blocksOf(Timestamp from, Timestamp to) const;

    const std::size_t m_blockSize;
    const std::size_t m_fullBlocks; // that are kept beside the one that is being filled
    mutable std::mutex m_mutex;
    std::deque<std::shared_ptr<Block>> m_blocks; // guarded; all but the last never change again
};

} // namespace Nodes
