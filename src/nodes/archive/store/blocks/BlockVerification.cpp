#include "nodes/archive/store/blocks/BlockVerification.h"

#include "nodes/archive/store/blocks/ArchiveRows.h"
#include "nodes/archive/store/blocks/BlockBytes.h"
#include "nodes/archive/store/blocks/BlockTree.h"
#include "nodes/archive/store/codec/ColumnWriter.h"
#include "nodes/archive/store/codec/Pyramid.h"

#include <limits>

namespace Nodes {

namespace {

constexpr Timestamp endOfTime = std::numeric_limits<Timestamp>::max();
constexpr std::size_t all = std::numeric_limits<std::size_t>::max();

std::string bytesOf(const Pyramid &pyramid)
{
    ColumnWriter writer;
    pyramid.Put(writer);
    return writer.Take();
}

} // namespace

void BlockVerification::report(const StoredSignal &signal, const StoredBlock &block,
                               const std::string &text)
{
    const std::string what = block.height == 0 ? "samples" : "aggregates";
    m_findings.push_back({signal.key, block.first, block.last,
                          "block " + std::to_string(block.id) + " of " + what + ", height " +
                              std::to_string(block.height) + ", of signal " +
                              std::to_string(signal.number),
                          text});
}

std::string BlockVerification::CheckChunk(const StoredBlock &chunk, const std::string &bytes,
                                          SampleRun &run)
{
    if (!BlockBytes::ReadSamples(bytes, chunk.signal, run) || run.IsEmpty()) {
        run.Clear();
        return "cannot be read: its bytes were changed";
    }
    if (!run.IsAscending())
        return "its samples are not in the order of time";
    if (run.times.front() != chunk.first || run.times.back() != chunk.last)
        return "it holds samples of another span than its row says";
    if (run.Size() != chunk.samples)
        return "it holds " + std::to_string(run.Size()) + " samples, not " +
               std::to_string(chunk.samples);
    return {};
}

Result BlockVerification::checkChunk(const StoredSignal &signal, const StoredBlock &chunk)
{
    std::string bytes;
    const Result read = m_rows.ReadBlock(chunk, bytes);
    if (!read)
        return read;
    SampleRun run;
    const std::string fault = CheckChunk(chunk, bytes, run);
    if (!fault.empty()) {
        report(signal, chunk, fault);
        return read;
    }
    StoredBlocks above;
    const Result listed = m_rows.ListBlocks(signal.number, 1, chunk.first, chunk.first, 1, above);
    if (!listed || run.Size() < BlockTree::LeastAggregated)
        return listed;
    if (above.empty() || above.front().first != chunk.first) {
        report(signal, chunk, "its aggregates are missing");
        return listed;
    }
    Pyramid stored;
    const Result readAbove = m_rows.ReadBlock(above.front(), bytes);
    if (readAbove && (!BlockBytes::ReadPyramid(bytes, signal.number, 1, stored) ||
                      bytesOf(stored) != bytesOf(Pyramid::Of(run))))
        report(signal, above.front(), "is not what the samples below it give");
    return readAbove;
}

Result BlockVerification::checkChunks(const StoredSignal &signal,
                                      const std::atomic<bool> &isCancelled)
{
    StoredBlocks chunks;
    Result result =
        m_rows.ListBlocks(signal.number, 0, StoredSignal::Never, endOfTime, all, chunks);
    for (std::size_t i = 0; result && i < chunks.size(); ++i) {
        if (isCancelled)
            return Result(Result::Cancelled);
        result = checkChunk(signal, chunks[i]);
        if (i > 0 && chunks[i].first <= chunks[i - 1].last)
            report(signal, chunks[i], "overlaps with the block before it");
        if (chunks[i].last > signal.sealedTo)
            report(signal, chunks[i], "reaches behind what is said to be packed");
    }
    return result;
}

Result BlockVerification::checkPyramid(const StoredSignal &signal, const StoredBlock &block)
{
    std::string bytes;
    Result result = m_rows.ReadBlock(block, bytes);
    Pyramid stored;
    if (result && !BlockBytes::ReadPyramid(bytes, signal.number, block.height, stored)) {
        report(signal, block, "cannot be read: its bytes were changed");
        return result;
    }
    StoredBlocks children;
    if (result)
        result = m_rows.ListBlocks(signal.number, block.height - 1, block.first, block.last, all,
                                   children);
    if (result && !children.empty() && children.front().first < block.first)
        children.erase(children.begin());
    Pyramid joined;
    const Result join =
        children.empty() ? Result(Result::ParseError) : BlockTree::Join(m_rows, children, joined);
    if (result && join != Result::ParseError && !join)
        return join;
    if (result && (!join || bytesOf(joined) != bytesOf(stored)))
        report(signal, block, "is not what the blocks below it give");
    return result;
}

Result BlockVerification::checkAbove(const StoredSignal &signal, int height, bool &isAny)
{
    StoredBlocks blocks;
    Result result =
        m_rows.ListBlocks(signal.number, height, StoredSignal::Never, endOfTime, all, blocks);
    isAny = !blocks.empty();
    for (std::size_t i = 0; result && i < blocks.size(); ++i) {
        if (height > 1)
            result = checkPyramid(signal, blocks[i]);
        if (i > 0 && blocks[i].first <= blocks[i - 1].last)
            report(signal, blocks[i], "overlaps with the block before it");
    }
    return result;
}

Result BlockVerification::CheckSignal(const StoredSignal &signal,
                                      const std::atomic<bool> &isCancelled)
{
    Result result = checkChunks(signal, isCancelled);
    bool isAny = true;
    for (int height = 1; result && isAny; ++height)
        result = checkAbove(signal, height, isAny);
    return result;
}

Result BlockVerification::CheckLog(const std::string &location)
{
    std::vector<StoredSignal> signals;
    Result result = m_rows.ReadSignals(0, signals);
    if (result)
        result = m_rows.ReadLog(0, [&](std::int64_t number, const std::string &bytes) {
            BlockBytes::LogRow row;
            bool isSound = BlockBytes::ReadLog(bytes, row);
            SampleRun run;
            for (const auto &part : row.parts)
                isSound = isSound && BlockBytes::ReadLogPart(part.second, row.base, run);
            if (!isSound)
                m_findings.push_back({{},
                                      0,
                                      0,
                                      location + ", row " + std::to_string(number) + " of the log",
                                      "cannot be read: its bytes were changed"});
        });
    if (result)
        result = m_rows.ReadOddRecords([&](std::uint64_t key, const std::string &bytes) {
            m_findings.push_back(
                {{},
                 0,
                 0,
                 location + ", record " + std::to_string(key),
                 std::to_string(bytes.size()) + " bytes that are no samples were put aside"});
        });
    return result;
}

} // namespace Nodes
