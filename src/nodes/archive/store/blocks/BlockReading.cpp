#include "nodes/archive/store/blocks/BlockReading.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/store/blocks/BlockPlan.h"

#include <algorithm>
#include <limits>

namespace Nodes {

namespace {

constexpr Timestamp endOfTime = std::numeric_limits<Timestamp>::max();
constexpr int anyGrid = 64;

void add(const SampleRun &run, std::size_t begin, std::size_t end, HistoryColumnBuilder &into)
{
    if (begin < end)
        into.Add(&run.times[begin], &run.numbers[begin], &run.qualities[begin], end - begin);
}

void addOne(const SampleRun &run, std::size_t i, HistoryColumnBuilder &into)
{
    into.Add(run.times[i], run.numbers[i], run.qualities[i]);
}

void joinRun(const SampleRun &run, Timestamp from, Timestamp to, PyramidBucket &into)
{
    const std::size_t end = run.LowerBound(to + 1);
    for (std::size_t i = run.LowerBound(from); i < end; ++i)
        into.Join(BucketOf(run, i));
}

/// Samples there are in the span at least, without a look into the blocks at its ends.
std::uint64_t countOf(const StoredBlocks &blocks, Timestamp from, Timestamp to)
{
    std::uint64_t count = 0;
    for (const StoredBlock &block : blocks) {
        if (block.first >= from && block.last <= to)
            count += block.samples;
    }
    return count;
}

ArchiveBucket asBucket(const PyramidBucket &joined, Timestamp begin, Timestamp end)
{
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    ArchiveBucket bucket;
    bucket.interval = {begin, end, none, none, none, none, 0, Quality::Bad};
    bucket.mean = none;
    if (joined.count == 0)
        return bucket;
    bucket.interval = {begin,        end,         joined.minimum, joined.maximum,
                       joined.first, joined.last, joined.count,   joined.worst};
    if (joined.known > 0)
        bucket.mean = joined.sum / static_cast<double>(joined.known);
    return bucket;
}

/// Begin of a bucket: no product that overflows, however long the span.
Timestamp beginOf(std::size_t i, Timestamp from, Timestamp to, std::size_t count)
{
    const auto width = static_cast<std::uint64_t>(to - from);
    const std::uint64_t whole = width / count * i;
    return from + static_cast<Timestamp>(whole + width % count * i / count);
}

} // namespace

void BlockReading::Forget()
{
    m_tails.Forget();
    m_chunkOf = StoredBlock();
}

/// Into m_chunk; as a gap where it is damaged. Blocks are never changed, but an id may come again.
Result BlockReading::readChunk(const StoredBlock &chunk)
{
    const bool isSame = chunk.id == m_chunkOf.id && chunk.signal == m_chunkOf.signal &&
                        chunk.first == m_chunkOf.first && chunk.last == m_chunkOf.last &&
                        chunk.samples == m_chunkOf.samples && chunk.bytes == m_chunkOf.bytes;
    if (chunk.id != 0 && isSame)
        return Result();
    m_chunkOf = StoredBlock();
    const Result read = m_rows.ReadBlock(chunk, m_bytes);
    if (!read)
        return read;
    if (BlockBytes::ReadSamples(m_bytes, chunk.signal, m_chunk) && !m_chunk.IsEmpty()) {
        m_chunkOf = chunk;
        return read;
    }
    ++m_damaged;
    m_chunk.Clear();
    m_chunk.AddGap(chunk.first);
    return read;
}

Result BlockReading::addBefore(const StoredSignal &signal, HistoryColumnBuilder &into)
{
    const Timestamp from = into.GetFrom();
    if (const std::size_t end = m_tail.LowerBound(from); end > 0) {
        addOne(m_tail, end - 1, into);
        return Result();
    }
    StoredBlocks chunks;
    Result result = m_rows.ListBlocks(signal.number, 0, from - 1, from - 1, 1, chunks);
    if (!result || chunks.empty())
        return result;
    result = readChunk(chunks.front());
    if (const std::size_t end = m_chunk.LowerBound(from); result && end > 0)
        addOne(m_chunk, end - 1, into);
    return result;
}

Result BlockReading::addAfter(const StoredSignal &signal, HistoryColumnBuilder &into)
{
    const Timestamp to = into.GetTo();
    StoredBlocks chunks;
    Result result;
    if (to < signal.sealedTo)
        result = m_rows.ListBlocks(signal.number, 0, to, endOfTime, 2, chunks);
    for (const StoredBlock &chunk : chunks) {
        if (!result || chunk.last <= to || into.IsComplete())
            continue;
        result = readChunk(chunk);
        if (const std::size_t i = m_chunk.LowerBound(to + 1); result && i < m_chunk.Size())
            addOne(m_chunk, i, into);
    }
    const std::size_t i = m_tail.LowerBound(to + 1);
    if (result && !into.IsComplete() && i < m_tail.Size())
        addOne(m_tail, i, into);
    return result;
}

Result BlockReading::addChunk(const StoredBlock &chunk, HistoryColumnBuilder &into)
{
    const Result result = readChunk(chunk);
    if (result)
        add(m_chunk, m_chunk.LowerBound(into.GetFrom()), m_chunk.LowerBound(into.GetTo() + 1),
            into);
    return result;
}

void BlockReading::addTail(HistoryColumnBuilder &into) const
{
    add(m_tail, m_tail.LowerBound(into.GetFrom()), m_tail.LowerBound(into.GetTo() + 1), into);
}

Result BlockReading::addPlain(const StoredSignal &signal, HistoryColumnBuilder &into,
                              const std::atomic<bool> &isCancelled)
{
    StoredBlocks chunks;
    Result result = m_rows.ListBlocks(signal.number, 0, into.GetFrom(), into.GetTo(),
                                      std::numeric_limits<std::size_t>::max(), chunks);
    into.Reserve(countOf(chunks, StoredSignal::Never, endOfTime) + m_tail.Size());
    for (const StoredBlock &chunk : chunks) {
        if (isCancelled)
            return Result(Result::Cancelled);
        if (result && chunk.last >= into.GetFrom())
            result = addChunk(chunk, into);
    }
    return result;
}

Result BlockReading::addAggregate(const StoredBlock &block, HistoryColumnBuilder &into,
                                  bool &isRead)
{
    const Result read = m_rows.ReadBlock(block, m_bytes);
    isRead = read && BlockBytes::ReadPyramid(m_bytes, block.signal, block.height, m_pyramid);
    if (!isRead)
        return read;
    for (const PyramidBucket &bucket : m_pyramid.buckets)
        into.Add(bucket.InGrid(m_pyramid.bits));
    return read;
}

Result BlockReading::addAggregates(const StoredSignal &signal, const StoredBlocks &blocks,
                                   HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled)
{
    Result result;
    for (const StoredBlock &block : blocks) {
        if (isCancelled)
            return Result(Result::Cancelled);
        bool isRead = true;
        if (result)
            result = block.height == 0 ? addChunk(block, into) : addAggregate(block, into, isRead);
        if (!result)
            return result;
        if (isRead)
            continue;
        BlockPlan plan(m_rows, signal.number, into.GetFrom(), into.GetTo(), into.GetGridBits());
        StoredBlocks below;
        result = plan.MakeBelow(block, below);
        if (result)
            result = addAggregates(signal, below, into, isCancelled);
    }
    return result;
}

Result BlockReading::Read(const StoredSignal &signal, HistoryColumnBuilder &into,
                          const std::atomic<bool> &isCancelled)
{
    Result result = m_tails.Find(signal, m_tail);
    if (result)
        result = addBefore(signal, into);
    StoredBlocks blocks;
    const std::size_t most = into.GetMaxPoints();
    if (result && most > 0) {
        BlockPlan plan(m_rows, signal.number, into.GetFrom(), into.GetTo(), into.GetGridBits());
        result = plan.Make(blocks);
    }
    const std::size_t inTail =
        m_tail.LowerBound(into.GetTo() + 1) - m_tail.LowerBound(into.GetFrom());
    const bool isPlain =
        most == 0 || countOf(blocks, into.GetFrom(), into.GetTo()) + inTail <= most;
    if (result)
        result = isPlain ? addPlain(signal, into, isCancelled)
                         : addAggregates(signal, blocks, into, isCancelled);
    if (!result)
        return result;
    addTail(into);
    return addAfter(signal, into);
}

Result BlockReading::ReadNext(const StoredSignal &signal, Timestamp from, Timestamp to,
                              SampleRun &run, std::size_t &damaged)
{
    run.Clear();
    StoredBlocks chunks;
    Result result;
    m_damaged = 0;
    if (from <= signal.sealedTo)
        result = m_rows.ListBlocks(signal.number, 0, from, to, 2, chunks);
    for (const StoredBlock &chunk : chunks) {
        if (!result || !run.IsEmpty() || chunk.last < from)
            continue;
        result = readChunk(chunk);
        run = m_chunk.Part(from, to);
    }
    damaged += m_damaged;
    if (!result || !run.IsEmpty())
        return result;
    result = m_tails.Find(signal, m_tail);
    run = m_tail.Part(from, to);
    return result;
}

Result BlockReading::joinBlock(const StoredBlock &block, Timestamp from, Timestamp to,
                               PyramidBucket &into, bool &isRead)
{
    Result result;
    isRead = true;
    if (block.height == 0) {
        result = readChunk(block);
        if (result)
            joinRun(m_chunk, from, to, into);
        return result;
    }
    result = m_rows.ReadBlock(block, m_bytes);
    isRead = result && BlockBytes::ReadPyramid(m_bytes, block.signal, block.height, m_pyramid);
    for (std::size_t i = 0; isRead && i < m_pyramid.buckets.size(); ++i)
        into.Join(m_pyramid.buckets[i]);
    return result;
}

Result BlockReading::join(const StoredSignal &signal, Timestamp from, Timestamp to,
                          PyramidBucket &into)
{
    BlockPlan plan(m_rows, signal.number, from, to, anyGrid);
    StoredBlocks blocks;
    Result result = plan.Make(blocks);
    for (std::size_t i = 0; result && i < blocks.size(); ++i) {
        bool isRead = true;
        result = joinBlock(blocks[i], from, to, into, isRead);
        StoredBlocks below;
        if (result && !isRead)
            result = plan.MakeBelow(blocks[i], below);
        blocks.insert(blocks.begin() + std::ptrdiff_t(i) + 1, below.begin(), below.end());
    }
    if (result)
        joinRun(m_tail, from, to, into);
    return result;
}

Result BlockReading::ReadBuckets(const StoredSignal &signal, Timestamp from, Timestamp to,
                                 std::size_t count, std::vector<ArchiveBucket> &buckets,
                                 const std::atomic<bool> &isCancelled)
{
    buckets.clear();
    if (count == 0 || to <= from || static_cast<std::uint64_t>(to - from) < count)
        return Result(Result::InvalidArgument, "no bucket, or buckets of no width");
    Result result = m_tails.Find(signal, m_tail);
    for (std::size_t i = 0; result && i < count; ++i) {
        if (isCancelled)
            return Result(Result::Cancelled);
        const Timestamp begin = beginOf(i, from, to, count);
        const Timestamp end = beginOf(i + 1, from, to, count);
        PyramidBucket joined;
        result = join(signal, begin, end - 1, joined);
        buckets.push_back(asBucket(joined, begin, end));
    }
    return result;
}

Result BlockReading::Sum(const StoredSignal &signal, StoredBlock &sum)
{
    Result result = m_rows.SumChunks(signal.number, sum);
    if (result)
        result = m_tails.Find(signal, m_tail);
    if (!result || m_tail.IsEmpty())
        return result;
    if (sum.samples == 0)
        sum.first = m_tail.times.front();
    sum.last = m_tail.times.back();
    sum.samples += m_tail.Size();
    sum.bytes += m_tails.BytesOf(signal.number);
    return result;
}

} // namespace Nodes
