#include "nodes/archive/store/blocks/ChunkSealer.h"

#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/blocks/BlockBytes.h"

#include <algorithm>
#include <string>

namespace Nodes {

namespace {

constexpr std::size_t full = BlockTree::FullChunk;

bool joinsFull(std::size_t gathered, std::size_t next)
{
    return next < full && gathered + next < 2 * full;
}

bool joinsAlike(std::size_t gathered, std::size_t next)
{
    return next <= 2 * gathered && gathered + next <= full;
}

} // namespace

/// The chunks at the end that the rule takes, oldest first, and their samples.
Result ChunkSealer::gatherShort(const StoredSignal &signal, std::size_t gathered, Rule joins,
                                StoredBlocks &chunks, SampleRun &run)
{
    std::vector<SampleRun> runs;
    std::size_t textBytes = 0;
    for (Timestamp until = signal.sealedTo; until > StoredSignal::Never;) {
        StoredBlocks last;
        Result result = m_tables.ListBlocks(signal.number, 0, until, until, 1, last);
        if (!result)
            return result;
        if (last.empty() || !joins(gathered, last.front().samples))
            break;
        std::string bytes;
        result = m_tables.ReadBlock(last.front(), bytes);
        if (!result)
            return result;
        SampleRun samples;
        if (!BlockBytes::ReadSamples(bytes, signal.number, samples))
            break; // damaged: it stays as it is, for Verify
        textBytes += samples.TextBytes();
        if (textBytes > BlockTree::MostTextBytes)
            break;
        gathered += samples.Size();
        until = last.front().first - 1;
        chunks.push_back(last.front());
        runs.push_back(std::move(samples));
    }
    std::reverse(chunks.begin(), chunks.end());
    for (auto samples = runs.rbegin(); samples != runs.rend(); ++samples)
        run.Append(*samples);
    return Result();
}

Result ChunkSealer::seal(StoredSignal &signal, const StoredBlocks &replaced, const SampleRun &run)
{
    Result result;
    for (const StoredBlock &chunk : replaced) {
        if (result)
            result = m_tree.EraseChunk(chunk);
    }
    for (std::size_t begin = 0; result && begin < run.Size(); begin += full) {
        SampleRun chunk;
        chunk.Append(run, begin, std::min(begin + full, run.Size()));
        result = m_tree.PutChunk(signal.number, chunk);
    }
    if (!result)
        return result;
    signal.sealedTo = std::max(signal.sealedTo, run.times.back());
    result = m_tables.UpdateSignal(signal);
    return result ? m_tree.Renew(signal.number, run.times.front(), run.times.back()) : result;
}

Result ChunkSealer::SealFull(StoredSignal &signal, SampleRun &tail, Timestamp before)
{
    const std::size_t there = tail.LowerBound(before);
    if (there < full)
        return Result();
    StoredBlocks replaced;
    SampleRun run;
    Result result = gatherShort(signal, 0, &joinsFull, replaced, run);
    const std::size_t sealed = (run.Size() + there) / full * full;
    if (!result || sealed <= run.Size())
        return result;
    const std::size_t taken = sealed - run.Size();
    run.Append(tail, 0, taken);
    result = seal(signal, replaced, run);
    if (result)
        tail.EraseFront(taken);
    return result;
}

Result ChunkSealer::SealAll(StoredSignal &signal, SampleRun &tail, Timestamp before)
{
    const std::size_t there = tail.LowerBound(before);
    if (there == 0)
        return Result();
    StoredBlocks replaced;
    SampleRun run;
    Result result = gatherShort(signal, there, &joinsAlike, replaced, run);
    run.Append(tail, 0, there);
    if (result)
        result = seal(signal, replaced, run);
    if (result)
        tail.EraseFront(there);
    return result;
}

} // namespace Nodes
