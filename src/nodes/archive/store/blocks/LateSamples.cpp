#include "nodes/archive/store/blocks/LateSamples.h"

#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/blocks/BlockBytes.h"

#include <algorithm>
#include <limits>
#include <string>

namespace Nodes {

namespace {

constexpr std::size_t full = BlockTree::FullChunk;
// A chunk that gets late samples grows up to this before it is parted, so that many of them that
// come one by one do not part it again and again.
constexpr std::size_t largest = 2 * full;
constexpr std::size_t mostSingle = 16;
constexpr Timestamp endOfTime = std::numeric_limits<Timestamp>::max();

} // namespace

Result LateSamples::findPlace(const StoredSignal &signal, const SampleRun &late, std::size_t begin,
                              Place &place)
{
    const Timestamp time = late.times[begin];
    StoredBlocks chunks;
    const Result listed = m_tables.ListBlocks(signal.number, 0, time, endOfTime, 3, chunks);
    if (!listed)
        return listed;
    const bool hasBefore = !chunks.empty() && chunks.front().first <= time;
    const std::size_t next = hasBefore ? 1 : 0;
    const auto countBefore = [&](std::size_t chunk) {
        const std::size_t end =
            chunk < chunks.size() ? late.LowerBound(chunks[chunk].first) : late.Size();
        return end - begin;
    };
    place = Place{{}, countBefore(next)};
    if (hasBefore && (chunks[0].last >= time || chunks[0].samples + place.count <= full))
        place.chunk = {chunks[0]};
    else if (!hasBefore && !chunks.empty() && chunks[0].samples + place.count <= full)
        place = Place{{chunks[0]}, countBefore(1)};
    return Result();
}

Result LateSamples::readChunk(const StoredBlock &chunk, SampleRun &run)
{
    std::string bytes;
    const Result read = m_tables.ReadBlock(chunk, bytes);
    if (!read || BlockBytes::ReadSamples(bytes, chunk.signal, run))
        return read;
    // Ingest must not stop at it, and nothing of it may get lost either.
    run.Clear();
    return m_tables.PutOddRecord(ArchiveTables::DamagedBlock, bytes);
}

Result LateSamples::insert(const StoredSignal &signal, const SampleRun &late, std::size_t begin,
                           const Place &place)
{
    SampleRun run;
    Result result;
    if (!place.chunk.empty())
        result = readChunk(place.chunk.front(), run);
    const std::size_t before = run.Size();
    run.Append(late, begin, begin + place.count);
    run.Sort();
    if (!result || run.Size() == before)
        return result;
    if (!place.chunk.empty())
        result = m_tree.EraseChunk(place.chunk.front());
    const bool isWhole = !place.chunk.empty() && run.Size() <= largest;
    if (result)
        result = m_tree.PutChunks(signal.number, run, isWhole ? largest : full);
    Timestamp from = run.times.front();
    Timestamp to = run.times.back();
    if (!place.chunk.empty()) {
        from = std::min(from, place.chunk.front().first);
        to = std::max(to, place.chunk.front().last);
    }
    m_changed.emplace_back(from, to);
    return result;
}

/// Few changes one by one, as they may be far apart; many as one.
Result LateSamples::renew(std::int64_t signal)
{
    if (m_changed.size() > mostSingle)
        m_changed = {{m_changed.front().first, m_changed.back().second}};
    Result result;
    for (const Span &span : m_changed) {
        if (result)
            result = m_tree.Renew(signal, span.first, span.second);
    }
    m_changed.clear();
    return result;
}

Result LateSamples::Insert(const StoredSignal &signal, const SampleRun &late)
{
    m_changed.clear();
    Result result;
    Place place;
    for (std::size_t begin = 0; result && begin < late.Size(); begin += place.count) {
        result = findPlace(signal, late, begin, place);
        if (result)
            result = insert(signal, late, begin, place);
    }
    return result ? renew(signal.number) : result;
}

} // namespace Nodes
