#include "nodes/archive/store/blocks/ArchiveTrim.h"

#include "nodes/archive/store/blocks/ArchiveTables.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace Nodes {

namespace {

constexpr std::size_t stepSignals = 16;
constexpr std::size_t stepChunks = 32;
constexpr Timestamp endOfTime = std::numeric_limits<Timestamp>::max();

} // namespace

Result ArchiveTrim::begin()
{
    m_signals.clear();
    m_next = 0;
    m_whole = 0;
    m_oldest.clear();
    m_isGathered = false;
    m_isUnderWay = true;
    return m_tables.ReadSignals(0, m_signals);
}

/// Chunks that end before that time, and as many more as `excess` bytes are; a step's at most.
Result ArchiveTrim::eraseOldest(std::int64_t signal, Timestamp before, std::uint64_t excess,
                                std::size_t &erased)
{
    erased = 0;
    m_erasedBytes = 0;
    StoredBlocks chunks;
    Result result =
        m_tables.ListBlocks(signal, 0, StoredSignal::Never, endOfTime, stepChunks, chunks);
    while (result && erased < chunks.size() &&
           (chunks[erased].last < before || excess > m_erasedBytes)) {
        m_erasedBytes += chunks[erased].bytes;
        result = m_tree.EraseChunk(chunks[erased++]);
    }
    if (result && erased > 0)
        result = m_tree.Renew(signal, chunks.front().first, chunks[erased - 1].last);
    return result;
}

Result ArchiveTrim::trimNext(const ArchiveRetentionRules &rules, Timestamp now)
{
    const StoredSignal &signal = m_signals[m_next];
    const auto own = rules.bySignal.find(signal.key);
    const ArchiveRetention &rule = own == rules.bySignal.end() ? rules.others : own->second;
    StoredBlock sum;
    Result result;
    if (rule.maximumBytes > 0 || rules.maximumBytes > 0)
        result = m_tables.SumChunks(signal.number, sum);
    const bool isExcess = rule.maximumBytes > 0 && sum.bytes > rule.maximumBytes;
    std::size_t erased = 0;
    if (result && rule.isNeeded())
        result = eraseOldest(signal.number,
                             rule.maximumAge > 0 ? now - rule.maximumAge : StoredSignal::Never,
                             isExcess ? sum.bytes - rule.maximumBytes : 0, erased);
    if (!result || erased == stepChunks)
        return result; // and again
    m_whole += sum.bytes - std::min(sum.bytes, erased > 0 ? m_erasedBytes : 0);
    ++m_next;
    return result;
}

Result ArchiveTrim::pushOldest(std::int64_t signal)
{
    StoredBlocks chunks;
    const Result result = m_tables.ListBlocks(signal, 0, StoredSignal::Never, endOfTime, 1, chunks);
    if (result && !chunks.empty()) {
        m_oldest.emplace_back(chunks.front().last, signal);
        std::push_heap(m_oldest.begin(), m_oldest.end(), std::greater<>());
    }
    return result;
}

Result ArchiveTrim::gatherOldest()
{
    Result result;
    for (const StoredSignal &signal : m_signals) {
        if (result)
            result = pushOldest(signal.number);
    }
    m_isGathered = true;
    return result;
}

/// Takes the oldest chunk of all, and again, until the whole is small enough.
Result ArchiveTrim::trimWhole(std::uint64_t most)
{
    Result result = m_isGathered ? Result() : gatherOldest();
    for (std::size_t i = 0; result && i < stepChunks && m_whole > most && !m_oldest.empty(); ++i) {
        std::pop_heap(m_oldest.begin(), m_oldest.end(), std::greater<>());
        const std::int64_t signal = m_oldest.back().second;
        m_oldest.pop_back();
        std::size_t erased = 0;
        result = eraseOldest(signal, StoredSignal::Never, 1, erased);
        m_whole -= std::min(m_whole, m_erasedBytes);
        if (result && erased > 0)
            result = pushOldest(signal);
    }
    return result;
}

Result ArchiveTrim::Step(const ArchiveRetentionRules &rules, Timestamp now, bool &hasMore)
{
    hasMore = false;
    Result result = m_isUnderWay ? Result() : begin();
    for (std::size_t i = 0; result && i < stepSignals && m_next < m_signals.size(); ++i)
        result = trimNext(rules, now);
    const bool isLooked = m_next == m_signals.size();
    const std::uint64_t most = rules.maximumBytes;
    if (result && isLooked && most > 0 && m_whole > most)
        result = trimWhole(most);
    const bool isTooLarge = most > 0 && m_whole > most && !(m_isGathered && m_oldest.empty());
    hasMore = result && (!isLooked || isTooLarge);
    m_isUnderWay = hasMore;
    return result;
}

} // namespace Nodes
