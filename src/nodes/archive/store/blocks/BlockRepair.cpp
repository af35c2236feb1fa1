#include "nodes/archive/store/blocks/BlockRepair.h"

#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/blocks/BlockBytes.h"
#include "nodes/archive/store/blocks/BlockVerification.h"
#include "nodes/archive/store/blocks/LateSamples.h"

#include <algorithm>
#include <limits>

namespace Nodes {

namespace {

constexpr Timestamp endOfTime = std::numeric_limits<Timestamp>::max();
constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

} // namespace

void BlockRepair::report(const StoredSignal &signal, const StoredBlock &block,
                         const std::string &text)
{
    m_done.push_back(
        {signal.key, block.first, block.last,
         "block " + std::to_string(block.id) + " of signal " + std::to_string(signal.number),
         text});
}

/// Takes chunks out that are not as their rows say; `taken` are their samples, as far as readable.
Result BlockRepair::mendChunks(StoredSignal &signal, SampleRun &taken)
{
    StoredBlocks chunks;
    Result result =
        m_tables.ListBlocks(signal.number, 0, StoredSignal::Never, endOfTime, all, chunks);
    Timestamp behind = StoredSignal::Never;
    for (const StoredBlock &chunk : chunks) {
        std::string bytes;
        if (result)
            result = m_tables.ReadBlock(chunk, bytes);
        if (!result)
            return result;
        SampleRun run;
        const std::string fault = BlockVerification::CheckChunk(chunk, bytes, run);
        if (fault.empty() && chunk.first > behind) {
            behind = chunk.last;
            signal.sealedTo = std::max(signal.sealedTo, chunk.last);
            continue;
        }
        if (run.IsEmpty()) {
            report(signal, chunk, "cannot be read, was put aside");
            result = m_tables.PutOddRecord(ArchiveTables::Settled, bytes);
        } else {
            report(signal, chunk, "its samples were put where they belong");
        }
        taken.Append(run);
        if (result)
            result = m_tables.EraseBlock(chunk);
    }
    taken.Sort();
    return result;
}

Result BlockRepair::eraseAbove(const StoredSignal &signal)
{
    StoredBlocks blocks;
    Result result;
    for (int height = 1; result; ++height) {
        result =
            m_tables.ListBlocks(signal.number, height, StoredSignal::Never, endOfTime, all, blocks);
        if (result && blocks.empty())
            break;
        for (const StoredBlock &block : blocks) {
            if (result)
                result = m_tables.EraseBlock(block);
        }
    }
    return result;
}

Result BlockRepair::putAbove(const StoredSignal &signal)
{
    StoredBlocks chunks;
    Result result =
        m_tables.ListBlocks(signal.number, 0, StoredSignal::Never, endOfTime, all, chunks);
    for (const StoredBlock &chunk : chunks) {
        std::string bytes;
        SampleRun run;
        if (result && chunk.samples >= BlockTree::LeastAggregated)
            result = m_tables.ReadBlock(chunk, bytes);
        if (result && BlockBytes::ReadSamples(bytes, signal.number, run))
            result = m_tree.PutAggregates(chunk, run);
    }
    if (!result || chunks.empty())
        return result;
    return m_tree.Renew(signal.number, chunks.front().first, chunks.back().last);
}

Result BlockRepair::MendSignal(StoredSignal signal)
{
    SampleRun taken;
    Result result = eraseAbove(signal);
    if (result)
        result = mendChunks(signal, taken);
    if (result && !taken.IsEmpty()) {
        signal.sealedTo = std::max(signal.sealedTo, taken.times.back());
        result = LateSamples(m_tables).Insert(signal, taken);
        if (result)
            result = eraseAbove(signal);
    }
    if (result)
        result = m_tables.UpdateSignal(signal);
    if (result)
        result = putAbove(signal);
    if (result)
        m_done.push_back({signal.key, 0, 0, "signal " + std::to_string(signal.number),
                          "its aggregates were made anew"});
    return result;
}

Result BlockRepair::SettleRest()
{
    return m_tables.SettleOddRecords();
}

} // namespace Nodes
