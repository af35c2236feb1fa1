#include "nodes/archive/store/blocks/BlockPlan.h"

#include "nodes/archive/store/blocks/ArchiveRows.h"

#include <algorithm>
#include <limits>

namespace Nodes {

namespace {

constexpr int top = 8; // blocks of that height would be over 10^12 samples
constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

} // namespace

bool BlockPlan::isFitting(const StoredBlock &block) const
{
    return block.height == 0 ||
           (block.bits <= m_bits && block.first >= m_from && block.last <= m_to);
}

Result BlockPlan::collect(int height, Timestamp from, Timestamp to, StoredBlocks &blocks)
{
    StoredBlocks here;
    Result result = m_rows.ListBlocks(m_signal, height, from, to, all, here);
    Timestamp begin = from;
    for (const StoredBlock &block : here) {
        if (!result)
            return result;
        if (block.last < from)
            continue;
        if (height > 0 && block.first > begin)
            result = collect(height - 1, begin, block.first - 1, blocks);
        if (isFitting(block))
            blocks.push_back(block);
        else if (result)
            result =
                collect(height - 1, std::max(from, block.first), std::min(to, block.last), blocks);
        begin = block.last + 1;
    }
    if (result && height > 0 && begin <= to)
        result = collect(height - 1, begin, to, blocks);
    return result;
}

Result BlockPlan::Make(StoredBlocks &blocks)
{
    return collect(top, m_from, m_to, blocks);
}

Result BlockPlan::MakeBelow(const StoredBlock &block, StoredBlocks &blocks)
{
    return collect(block.height - 1, std::max(m_from, block.first), std::min(m_to, block.last),
                   blocks);
}

} // namespace Nodes
