#include "nodes/archive/store/blocks/ArchiveEngine.h"

#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/blocks/BlockBytes.h"
#include "nodes/values/Clock.h"

#include <algorithm>
#include <utility>

namespace Nodes {

namespace {

// What a reader has to look through for the newest samples, and a writer keeps in memory.
constexpr std::size_t longLogBytes = 4u << 20;
constexpr std::size_t longLogRows = 20000;
constexpr std::size_t mostInTails = 1000000; // samples, or what weighs as much
constexpr std::size_t packedSignals = 100;   // in one step
constexpr Timestamp day = Timestamp(86400) * 1000000;
constexpr Timestamp endOfTime = Timestamp(1) << 62;
constexpr std::size_t mostAhead = BlockTree::FullChunk;

std::size_t weightOf(const SampleRun &tail)
{
    constexpr std::size_t sampleBytes = 64; // about, with what belongs to them
    return tail.Size() + tail.TextBytes() / sampleBytes;
}

} // namespace

ArchiveEngine::ArchiveEngine(ArchiveTables &tables)
    : m_tables(tables), m_sealer(tables), m_late(tables), m_keys(tables)
{
}

ArchiveEngine::~ArchiveEngine() = default;

void ArchiveEngine::Forget()
{
    m_isLoaded = false;
    m_signals.clear();
    m_byKey.clear();
    m_touched.clear();
    m_toPack.clear();
    m_lastRow = 0;
    m_logBytes = 0;
    m_logRows = 0;
    m_tailWeight = 0;
    m_isLogDamaged = false;
}

Result ArchiveEngine::load()
{
    if (m_isLoaded)
        return Result();
    Forget();
    std::vector<StoredSignal> stored;
    Result result = m_tables.ReadSignals(0, stored);
    std::map<std::int64_t, Signal *> byNumber;
    for (StoredSignal &one : stored) {
        Signal &signal = m_signals.emplace_back();
        signal.stored = std::move(one);
        m_byKey[signal.stored.key] = &signal;
        byNumber[signal.stored.number] = &signal;
    }
    BlockBytes::LogRow row;
    SampleRun run;
    const auto takeRow = [&](std::int64_t number, const std::string &bytes) {
        m_lastRow = number;
        m_logBytes += bytes.size();
        ++m_logRows;
        m_isLogDamaged = !BlockBytes::ReadLog(bytes, row) || m_isLogDamaged;
        for (const auto &[owner, part] : row.parts) {
            const auto signal = byNumber.find(owner);
            if (signal != byNumber.end() && BlockBytes::ReadLogPart(part, row.base, run))
                signal->second->tail.Append(
                    run, run.LowerBound(signal->second->stored.sealedTo + 1), run.Size());
        }
    };
    if (result)
        result = m_tables.ReadLog(0, takeRow);
    for (Signal &signal : m_signals) {
        signal.tail.Sort();
        m_tailWeight += weightOf(signal.tail);
    }
    if (result)
        result = m_keys.Load();
    m_isLoaded = result.IsSuccess();
    return result;
}

Result ArchiveEngine::find(const ArchiveSignalKey &key, Signal *&signal)
{
    Signal *&known = m_byKey[key];
    if (!known) {
        StoredSignal stored;
        stored.key = key;
        const Result added = m_tables.AddSignal(stored);
        if (!added)
            return added;
        known = &m_signals.emplace_back();
        known->stored = std::move(stored);
    }
    signal = known;
    return Result();
}

Result ArchiveEngine::take(SamplePacket::Part &part)
{
    part.run.Sort();
    // Nothing was ever measured outside of time.
    if (part.run.IsEmpty() || part.run.times.front() < 1 || part.run.times.back() >= endOfTime)
        part.run = part.run.Part(1, endOfTime - 1);
    if (part.run.IsEmpty())
        return Result();
    Signal *signal = nullptr;
    const Result found = find(part.signal, signal);
    if (!found)
        return found;
    StoredSignal &stored = signal->stored;
    if (!stored.key.IsCalledAs(part.signal)) {
        stored.key = part.signal;
        signal->isChanged = true;
    }
    const Timestamp first = part.run.times.front();
    const Timestamp last = part.run.times.back();
    if (part.isGenerated &&
        (stored.generatedTo == 0 || first < stored.generatedFrom || last > stored.generatedTo)) {
        const bool isFirst = stored.generatedTo == 0;
        stored.generatedFrom = isFirst ? first : std::min(stored.generatedFrom, first);
        stored.generatedTo = std::max(stored.generatedTo, last);
        signal->isChanged = true;
    }
    if (!std::exchange(signal->isTouched, true))
        m_touched.push_back(signal);
    const std::size_t begin =
        stored.sealedTo == StoredSignal::Never ? 0 : part.run.LowerBound(stored.sealedTo + 1);
    signal->late.Append(part.run, 0, begin);
    if (begin == 0 && signal->fresh.IsEmpty())
        signal->fresh = std::move(part.run);
    else
        signal->fresh.Append(part.run, begin, part.run.Size());
    return Result();
}

Result ArchiveEngine::take(const Record &record)
{
    std::optional<SamplePacket> packet = SamplePacket::Unpack(record.bytes);
    if (!packet)
        return m_tables.PutOddRecord(record.key, record.bytes);
    Result result;
    for (SamplePacket::Part &part : packet->parts) {
        if (result)
            result = take(part);
    }
    return result;
}

/// A clock that was set wrong must not make everything after it late: what is far ahead waits in
/// the log, unless that would grow by it.
Timestamp ArchiveEngine::sealBefore(const SampleRun &tail) const
{
    const Timestamp border = Clock::Current().Now() + day;
    const bool isFarAhead = tail.Size() - tail.LowerBound(border) > mostAhead;
    return isFarAhead ? endOfTime : border;
}

/// Puts what the transaction brought where it belongs; what is to be logged stays fresh.
Result ArchiveEngine::settle(Signal &signal)
{
    Result result;
    if (!signal.late.IsEmpty()) {
        signal.late.Sort();
        result = m_late.Insert(signal.stored, signal.late);
    }
    signal.fresh.Sort();
    const std::size_t before = weightOf(signal.tail);
    if (!signal.fresh.IsEmpty()) {
        const bool isLater =
            signal.tail.IsEmpty() || signal.tail.times.back() < signal.fresh.times.front();
        signal.tail.Append(signal.fresh);
        if (!isLater)
            signal.tail.Sort();
    }
    const Timestamp sealed = signal.stored.sealedTo;
    if (result)
        result = m_sealer.SealFull(signal.stored, signal.tail, sealBefore(signal.tail));
    if (result && signal.isChanged && signal.stored.sealedTo == sealed)
        result = m_tables.UpdateSignal(signal.stored);
    if (signal.stored.sealedTo != sealed)
        signal.fresh.EraseFront(signal.fresh.LowerBound(signal.stored.sealedTo + 1));
    signal.isChanged = false;
    m_tailWeight += weightOf(signal.tail) - before; // modulo 2^64
    return result;
}

Result ArchiveEngine::appendLog(const std::string &bytes, std::int64_t &row)
{
    const Result result = m_tables.AppendLog(bytes, row);
    m_lastRow = row;
    m_logBytes += bytes.size();
    ++m_logRows;
    return result;
}

Result ArchiveEngine::log(const std::vector<Signal *> &signals, std::int64_t &row)
{
    std::vector<BlockBytes::Part> parts;
    for (const Signal *signal : signals) {
        if (!signal->fresh.IsEmpty())
            parts.emplace_back(signal->stored.number, &signal->fresh);
    }
    return parts.empty() ? Result() : appendLog(BlockBytes::OfLog(parts), row);
}

Result ArchiveEngine::Write(const Records &records, std::vector<std::uint64_t> &numbers)
{
    numbers.assign(records.size(), 0);
    Result result = load();
    std::int64_t row = m_lastRow;
    std::vector<std::size_t> taken;
    for (std::size_t i = 0; result && i < records.size(); ++i) {
        if (m_keys.Has(records[i].key))
            continue;
        result = take(records[i]);
        m_keys.Add(records[i].key);
        taken.push_back(i);
    }
    for (Signal *signal : m_touched) {
        if (result)
            result = settle(*signal);
    }
    if (result)
        result = log(m_touched, row);
    if (result)
        result = m_keys.Save();
    for (Signal *signal : m_touched) {
        signal->isTouched = false;
        signal->fresh.Clear();
        signal->late.Clear();
    }
    m_touched.clear();
    for (const std::size_t i : taken)
        numbers[i] = static_cast<std::uint64_t>(std::max<std::int64_t>(row, 1));
    return result;
}

bool ArchiveEngine::NeedsPacking() const
{
    return !m_toPack.empty() || m_logBytes > longLogBytes || m_logRows > longLogRows ||
           m_tailWeight > mostInTails;
}

Result ArchiveEngine::Pack(bool &hasMore)
{
    hasMore = false;
    Result result = load();
    if (!result || !NeedsPacking())
        return result;
    if (m_toPack.empty()) {
        for (Signal &signal : m_signals) {
            if (!signal.tail.IsEmpty())
                m_toPack.push_back(&signal);
        }
    }
    for (std::size_t i = 0; result && i < packedSignals && !m_toPack.empty(); ++i) {
        Signal &signal = *m_toPack.back();
        m_toPack.pop_back();
        m_tailWeight -= weightOf(signal.tail);
        result = m_sealer.SealAll(signal.stored, signal.tail, sealBefore(signal.tail));
        m_tailWeight += weightOf(signal.tail);
    }
    hasMore = !m_toPack.empty();
    return result && !hasMore ? finishPacking() : result;
}

Result ArchiveEngine::saveDamagedRows()
{
    if (!std::exchange(m_isLogDamaged, false))
        return Result();
    std::vector<std::string> damaged;
    Result result = m_tables.ReadLog(0, [&](std::int64_t number, const std::string &bytes) {
        BlockBytes::LogRow row;
        if (!BlockBytes::ReadLog(bytes, row))
            damaged.push_back(bytes);
    });
    for (const std::string &bytes : damaged) {
        if (result)
            result = m_tables.PutOddRecord(ArchiveTables::DamagedBlock, bytes);
    }
    return result;
}

/// What came meanwhile, and what waits, is logged anew; the rest of the log is in chunks.
Result ArchiveEngine::finishPacking()
{
    std::vector<BlockBytes::Part> parts;
    for (const Signal &signal : m_signals) {
        if (!signal.tail.IsEmpty())
            parts.emplace_back(signal.stored.number, &signal.tail);
    }
    const std::int64_t packedTo = m_lastRow;
    m_logBytes = 0;
    m_logRows = 0;
    // Even an empty row: by it the next one has a number that there has not been.
    std::int64_t row = 0;
    Result logged = saveDamagedRows();
    if (logged)
        logged = appendLog(BlockBytes::OfLog(parts), row);
    return logged ? m_tables.EraseLog(packedTo) : logged;
}

} // namespace Nodes
