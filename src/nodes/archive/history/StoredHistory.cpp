#include "nodes/archive/history/StoredHistory.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/values/Clock.h"

#include <algorithm>
#include <utility>

namespace Nodes {

namespace {

constexpr std::size_t cacheBytes = 48u << 20;
constexpr int blockBits = 8; // cells of the grid in one block
constexpr std::size_t mostIdle = 4;
constexpr Timestamp hanging = 2 * 1000000; // a failure that took so long
constexpr Timestamp distrust = 10 * 1000000;

std::size_t samplesIn(const HistoryColumn &column, Timestamp from, Timestamp to)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < column.times.size(); ++i) {
        if (column.times[i] >= from && column.times[i] <= to)
            count += column.intervals.empty() ? 1 : column.intervals[i].count;
    }
    return count;
}

} // namespace

struct StoredHistory::Question
{
    const ArchiveSignalKey &signal;
    Timestamp closed;
    const std::atomic<bool> &isCancelled;
    int bits;
    std::size_t maxPoints;
    // First moment of the whole cells within the span, and the one behind the last.
    Timestamp begin;
    Timestamp end;
};

StoredHistory::StoredHistory(std::string location)
    : m_location(std::move(location)), m_cache(cacheBytes)
{
}

Result StoredHistory::with(const std::function<Result(ArchiveReader &)> &work) const
{
    const Timestamp begun = Clock::Current().Steady();
    std::unique_ptr<ArchiveReader> reader;
    {
        const std::lock_guard lock(m_mutex);
        if (begun < m_trustAt)
            return m_hanging;
        if (!m_idle.empty()) {
            reader = std::move(m_idle.back());
            m_idle.pop_back();
        }
    }
    if (!reader) {
        const Result made = ArchiveReaders().Make(m_location, reader);
        if (!made)
            return made;
    }
    const Result result = work(*reader);
    const Timestamp now = Clock::Current().Steady();
    const std::lock_guard lock(m_mutex);
    if (result == Result::StorageError && now - begun >= hanging) {
        m_hanging = result;
        m_trustAt = now + distrust;
    }
    if (m_idle.size() < mostIdle)
        m_idle.push_back(std::move(reader));
    return result;
}

Result StoredHistory::ListSignals(std::vector<ArchivedSignal> &signals) const
{
    signals.clear();
    return with([&](ArchiveReader &reader) { return reader.ListSignals(signals); });
}

Result StoredHistory::Visit(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                            const ArchiveReader::Visitor &visitor,
                            const std::atomic<bool> &isCancelled) const
{
    Result result;
    const Result found = with([&](ArchiveReader &reader) {
        result = reader.Visit(signal, from, to, visitor, isCancelled);
        return Result(); // a long visit that found damage is none that hangs
    });
    if (!found)
        return found;
    return result == Result::NotFound ? Result() : result;
}

Result StoredHistory::Read(const ArchiveSignalKey &signal, Timestamp closed,
                           HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled) const
{
    const int bits = into.GetGridBits();
    // The cells at both ends are read exactly, with the samples before and behind the span.
    const Timestamp begin = ((into.GetFrom() >> bits) + 1) << bits;
    const Timestamp end = into.GetTo() >> bits << bits;
    const Question question{signal, closed, isCancelled, bits, into.GetMaxPoints(), begin, end};
    const bool isShort = end - begin < Timestamp(1) << (bits + blockBits - 1);
    if (into.GetMaxPoints() == 0 || isShort)
        return readDirect(question, into);
    return readPieces(question, into);
}

Result StoredHistory::readDirect(const Question &question, HistoryColumnBuilder &into) const
{
    const Result result = with([&](ArchiveReader &reader) {
        return reader.Read(question.signal, into, question.isCancelled);
    });
    return result == Result::NotFound ? Result() : result;
}

Result StoredHistory::readPiece(const Question &question, HistoryColumnBuilder piece,
                                HistoryCache::Column &column) const
{
    const Result result = readDirect(question, piece);
    column = std::make_shared<const HistoryColumn>(piece.Take());
    return result;
}

/// As far as it is part of the span, unless it is worth keeping.
Result StoredHistory::readBlock(const Question &question, Timestamp index,
                                HistoryCache::Column &column) const
{
    const HistoryCache::Place place{question.signal, question.bits, index};
    const int bits = question.bits + blockBits;
    const Timestamp from = index << bits;
    const Timestamp to = from + (Timestamp(1) << bits) - 1;
    const bool isClosed = to < question.closed;
    if (isClosed)
        column = m_cache.Find(place);
    if (column)
        return Result();
    constexpr std::size_t points = std::size_t(1) << blockBits;
    const Timestamp first = isClosed ? from : std::max(from, question.begin);
    const Timestamp last = isClosed ? to : std::min(to, question.end - 1);
    const Result result = readPiece(
        question, HistoryColumnBuilder::OnGrid(first, last, points, question.bits), column);
    if (result && isClosed)
        m_cache.Keep(place, column);
    return result;
}

Result StoredHistory::readPieces(const Question &question, HistoryColumnBuilder &into) const
{
    const auto edge = [&](Timestamp from, Timestamp to) {
        return HistoryColumnBuilder::OnGrid(from, to, question.maxPoints, question.bits);
    };
    std::vector<HistoryCache::Column> pieces(1);
    Result result = readPiece(question, edge(into.GetFrom(), question.begin - 1), pieces.front());
    const int bits = question.bits + blockBits;
    const Timestamp lastBlock = (question.end - 1) >> bits;
    for (Timestamp index = question.begin >> bits; result && index <= lastBlock; ++index) {
        pieces.emplace_back();
        result = readBlock(question, index, pieces.back());
    }
    if (result) {
        pieces.emplace_back();
        result = readPiece(question, edge(question.end, into.GetTo()), pieces.back());
    }
    if (!result)
        return result;
    bool areAggregates = false;
    std::size_t count = 0;
    for (const auto &piece : pieces) {
        areAggregates = areAggregates || !piece->intervals.empty();
        count += samplesIn(*piece, piece == pieces.front() ? into.GetFrom() : question.begin,
                           piece == pieces.back() ? into.GetTo() : question.end - 1);
    }
    if (areAggregates && count <= question.maxPoints)
        return readDirect(question, into); // they fit as they are
    constexpr Timestamp ever = INT64_MAX;
    into.Add(*pieces.front(), -ever, question.begin);
    for (std::size_t i = 1; i + 1 < pieces.size(); ++i) {
        const Timestamp block = (question.begin >> bits) + Timestamp(i) - 1;
        into.Add(*pieces[i], std::max(question.begin, block << bits),
                 std::min(question.end, (block + 1) << bits));
    }
    into.Add(*pieces.back(), question.end, ever);
    return result;
}

} // namespace Nodes
