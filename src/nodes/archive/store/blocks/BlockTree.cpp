#include "nodes/archive/store/blocks/BlockTree.h"

#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/blocks/BlockBytes.h"
#include "nodes/archive/store/codec/Pyramid.h"

#include <algorithm>
#include <limits>
#include <string>

namespace Nodes {

namespace {

constexpr Timestamp endOfTime = std::numeric_limits<Timestamp>::max();
constexpr std::size_t all = std::numeric_limits<std::size_t>::max();
constexpr int highest = 12; // 16^11 chunks: more than there will ever be

/// How many of those left the next group gets, so that all are about alike.
std::size_t nextGroup(std::size_t left, std::size_t fan, bool isEnd)
{
    if (isEnd)
        return fan;
    const std::size_t groups = std::max<std::size_t>(1, (left + fan / 2) / fan);
    return (left + groups - 1) / groups;
}

} // namespace

Result BlockTree::putPyramid(StoredBlock block, const Pyramid &pyramid)
{
    const std::string bytes = BlockBytes::OfPyramid(block.signal, block.height, pyramid);
    block.id = 0;
    block.bits = pyramid.bits;
    block.bytes = bytes.size();
    return m_tables.PutBlock(block, bytes);
}

Result BlockTree::PutChunk(std::int64_t signal, const SampleRun &run)
{
    if (run.Size() > 1 && run.TextBytes() > MostTextBytes) {
        const Timestamp half = run.times[run.Size() / 2];
        const Result put = PutChunk(signal, run.Part(run.times.front(), half - 1));
        return put ? PutChunk(signal, run.Part(half, run.times.back())) : put;
    }
    const std::string bytes = BlockBytes::OfSamples(signal, run);
    StoredBlock block;
    block.signal = signal;
    block.first = run.times.front();
    block.last = run.times.back();
    block.samples = run.Size();
    block.bytes = bytes.size();
    const Result put = m_tables.PutBlock(block, bytes);
    return put ? PutAggregates(block, run) : put;
}

Result BlockTree::PutAggregates(StoredBlock chunk, const SampleRun &run)
{
    if (run.Size() < LeastAggregated)
        return Result();
    chunk.height = 1;
    return putPyramid(chunk, Pyramid::Of(run));
}

Result BlockTree::PutChunks(std::int64_t signal, const SampleRun &run, std::size_t most)
{
    const std::size_t count = (run.Size() + most - 1) / most;
    Result result;
    for (std::size_t i = 0; result && i < count; ++i) {
        SampleRun part;
        part.Append(run, run.Size() * i / count, run.Size() * (i + 1) / count);
        result = PutChunk(signal, part);
    }
    return result;
}

Result BlockTree::EraseChunk(const StoredBlock &chunk)
{
    StoredBlocks above;
    Result result = m_tables.ListBlocks(chunk.signal, 1, chunk.first, chunk.first, 1, above);
    if (result && !above.empty() && above.front().first == chunk.first)
        result = m_tables.EraseBlock(above.front());
    return result ? m_tables.EraseBlock(chunk) : result;
}

Result BlockTree::Join(ArchiveRows &rows, const StoredBlocks &children, Pyramid &pyramid)
{
    std::vector<Pyramid> below(children.size());
    int bits = 0;
    for (std::size_t i = 0; i < children.size(); ++i) {
        const StoredBlock &child = children[i];
        std::string bytes;
        const Result read = rows.ReadBlock(child, bytes);
        if (!read)
            return read;
        if (!BlockBytes::ReadPyramid(bytes, child.signal, child.height, below[i]))
            return Result(Result::ParseError, "block " + std::to_string(child.id));
        bits = std::max(bits, below[i].bits);
    }
    pyramid = Pyramid::Over(children.front().first, children.back().last, bits);
    std::vector<double> sums;
    for (const Pyramid &part : below) {
        for (const PyramidBucket &bucket : part.buckets) {
            pyramid.Add(bucket, part.bits);
            sums.push_back(bucket.sum);
        }
    }
    pyramid.RoundSums(sums);
    return Result();
}

Result BlockTree::putParent(const StoredBlocks &children)
{
    Pyramid pyramid;
    const Result joined = Join(m_tables, children, pyramid);
    // Damage is Verify's to tell: what is below is read instead.
    if (joined == Result::ParseError)
        return Result();
    if (!joined)
        return joined;
    StoredBlock parent = children.front();
    ++parent.height;
    parent.last = children.back().last;
    parent.samples = 0;
    for (const StoredBlock &child : children)
        parent.samples += child.samples;
    return putPyramid(parent, pyramid);
}

/// Widens the zone to all that the blocks of `height` + 1 that meet it stand on; those are
/// `parents`.
Result BlockTree::findZone(std::int64_t signal, int height, Zone &zone, StoredBlocks &parents)
{
    StoredBlocks later;
    Result result = m_tables.ListBlocks(signal, height + 1, zone.from, zone.to, all, parents);
    if (result)
        result = m_tables.ListBlocks(signal, height + 1, zone.to, endOfTime, 2, later);
    if (!result)
        return result;
    later.erase(std::remove_if(later.begin(), later.end(),
                               [&](const StoredBlock &b) { return b.first <= zone.to; }),
                later.end());
    zone.isEnd = later.empty();
    const bool isMet = !parents.empty() && parents.back().last >= zone.from;
    if (!isMet && !zone.isEnd && parents.empty())
        parents.push_back(later.front());
    Timestamp behindOthers = StoredSignal::Never;
    if (parents.size() > 0 && parents.front().last < zone.from && (isMet || zone.isEnd)) {
        behindOthers = parents.front().last + 1;
        parents.erase(parents.begin());
    }
    if (!parents.empty()) {
        zone.from = std::min(zone.from, parents.front().first);
        zone.to = std::max(zone.to, parents.back().last);
    }
    if (zone.isEnd) {
        // With those that wait for their group.
        if (parents.empty())
            zone.from = behindOthers;
        zone.to = endOfTime;
    }
    return result;
}

Result BlockTree::regroup(std::int64_t signal, int height, Zone &zone, bool &isChanged)
{
    StoredBlocks parents;
    Result result = findZone(signal, height, zone, parents);
    StoredBlocks children;
    if (result)
        result = m_tables.ListBlocks(signal, height, zone.from, zone.to, all, children);
    if (!result)
        return result;
    if (!children.empty() && children.front().first < zone.from)
        children.erase(children.begin());
    for (const StoredBlock &parent : parents) {
        if (result)
            result = m_tables.EraseBlock(parent);
    }
    isChanged = !parents.empty();
    const std::size_t least = zone.isEnd ? Fan : 1;
    for (std::size_t i = 0; result && children.size() - i >= least;) {
        const std::size_t size = nextGroup(children.size() - i, Fan, zone.isEnd);
        const auto begin = children.begin() + std::ptrdiff_t(i);
        result = putParent(StoredBlocks(begin, begin + std::ptrdiff_t(size)));
        isChanged = true;
        i += size;
    }
    if (zone.isEnd && !children.empty()) {
        // All that changed of the height above, and what is gone of it.
        zone.to = std::max(children.back().last,
                           parents.empty() ? StoredSignal::Never : parents.back().last);
        if (parents.empty())
            zone.from = std::max(zone.from, children.front().first);
    }
    return result;
}

Result BlockTree::Renew(std::int64_t signal, Timestamp from, Timestamp to)
{
    Zone zone{from, to};
    Result result;
    bool isChanged = true;
    for (int height = 1; result && isChanged && height < highest; ++height)
        result = regroup(signal, height, zone, isChanged);
    return result;
}

} // namespace Nodes
