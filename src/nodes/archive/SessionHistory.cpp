#include "nodes/archive/SessionHistory.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/values/SignalValue.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::size_t smallestBlock = 16;
constexpr std::size_t largestBlock = 4096; // 96 KB

} // namespace

SessionHistory::SessionHistory(std::size_t capacity)
    : m_blockSize(std::clamp(capacity / 8, smallestBlock, largestBlock)),
      m_fullBlocks((capacity + m_blockSize - 1) / m_blockSize)
{
}

void SessionHistory::Offer(Timestamp time, const SignalValue &value)
{
    const Kept kept{time, value.ToDouble(), value.GetQuality()};
    const std::lock_guard lock(m_mutex);
    if (m_blocks.empty() || m_blocks.back()->size() == m_blockSize) {
        m_blocks.push_back(std::make_shared<Block>());
        if (m_blocks.size() > m_fullBlocks + 1)
            m_blocks.pop_front();
    }
    m_blocks.back()->push_back(kept);
}

/// With the samples before and behind the span.
SessionHistory::Blocks SessionHistory::blocksOf(Timestamp from, Timestamp to) const
{
    Blocks blocks;
    const std::lock_guard lock(m_mutex);
    for (const auto &block : m_blocks) {
        if (block->front().time < from)
            blocks.clear(); // only the last that begins before it can hold the sample before
        const bool isBehind = !blocks.empty() && blocks.back()->back().time > to;
        if (isBehind)
            break;
        const bool isFilled = block != m_blocks.back();
        blocks.push_back(isFilled ? block : std::make_shared<const Block>(*block));
    }
    return blocks;
}

Result SessionHistory::Read(HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled) const
{
    for (const auto &block : blocksOf(into.GetFrom(), into.GetTo())) {
        if (isCancelled)
            return Result(Result::Cancelled);
        for (auto kept = block->begin(); kept != block->end() && !into.IsComplete(); ++kept)
            into.Add(kept->time, kept->number, kept->quality);
    }
    return Result();
}

} // namespace Nodes
