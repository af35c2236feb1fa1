#include "nodes/archive/store/blocks/BlockArchiveReader.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/store/blocks/ArchiveConnection.h"
#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/blocks/BlockRepair.h"
#include "nodes/archive/store/blocks/BlockVerification.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::size_t visitedAtOnce = 16;                 // chunks
constexpr Timestamp endOfTime = (Timestamp(1) << 62) - 1; // nothing is kept behind it

ArchivedSignal asArchived(const StoredSignal &stored, const StoredBlock &sum)
{
    ArchivedSignal signal;
    signal.key = stored.key;
    signal.samples = sum.samples;
    signal.bytes = sum.bytes;
    signal.first = sum.samples > 0 ? sum.first : 0;
    signal.last = sum.samples > 0 ? sum.last : 0;
    signal.generatedFrom = stored.generatedFrom;
    signal.generatedTo = stored.generatedTo;
    return signal;
}

} // namespace

BlockArchiveReader::BlockArchiveReader(std::unique_ptr<ArchiveConnection> connection)
    : m_connection(std::move(connection)), m_reading(m_connection->Rows())
{
}

BlockArchiveReader::~BlockArchiveReader() = default;

const std::string &BlockArchiveReader::GetLocation() const
{
    return m_connection->GetLocation();
}

/// Runs `work` on one state of everything.
template <class Work> Result BlockArchiveReader::run(Work work)
{
    bool isNew = false;
    Result result = m_connection->Begin(isNew);
    if (!result)
        return result;
    if (isNew)
        m_reading.Forget();
    result = work();
    m_connection->End();
    if (result == Result::StorageError) {
        m_connection->Close();
        m_reading.Forget();
    }
    return result;
}

template <class Work> Result BlockArchiveReader::runFor(const ArchiveSignalKey &key, Work work)
{
    return run([&] {
        std::optional<StoredSignal> signal;
        const Result found = m_connection->Rows().FindSignal(key, signal);
        if (found && !signal)
            return Result(Result::NotFound, GetLocation() + ": holds nothing of signal " +
                                                std::to_string(key.source.node));
        return found ? work(*signal) : found;
    });
}

Result BlockArchiveReader::readSignals(std::vector<StoredSignal> &signals)
{
    return run([&] { return m_connection->Rows().ReadSignals(0, signals); });
}

Result BlockArchiveReader::ListSignals(std::vector<ArchivedSignal> &signals)
{
    signals.clear();
    const Result result = run([&] {
        std::vector<StoredSignal> stored;
        Result read = m_connection->Rows().ReadSignals(0, stored);
        for (const StoredSignal &signal : stored) {
            StoredBlock sum;
            if (read)
                read = m_reading.Sum(signal, sum);
            signals.push_back(asArchived(signal, sum));
        }
        return read;
    });
    std::sort(signals.begin(), signals.end(),
              [](const ArchivedSignal &a, const ArchivedSignal &b) { return a.key < b.key; });
    return result;
}

Result BlockArchiveReader::Read(const ArchiveSignalKey &signal, HistoryColumnBuilder &into,
                                const std::atomic<bool> &isCancelled)
{
    return runFor(signal, [&](const StoredSignal &stored) {
        return m_reading.Read(stored, into, isCancelled);
    });
}

/// Some chunks within one transaction: one that lasts would keep the log from being taken up.
Result BlockArchiveReader::readPortion(const ArchiveSignalKey &signal, Timestamp &from,
                                       Timestamp to, const std::atomic<bool> &isCancelled,
                                       std::vector<SampleRun> &portion, std::size_t &damaged)
{
    portion.clear();
    return runFor(signal, [&](const StoredSignal &stored) {
        Result result;
        while (result && from <= to && portion.size() < visitedAtOnce) {
            if (isCancelled)
                return Result(Result::Cancelled);
            SampleRun run;
            result = m_reading.ReadNext(stored, from, to, run, damaged);
            from = run.IsEmpty() ? endOfTime + 1 : run.times.back() + 1;
            if (!run.IsEmpty())
                portion.push_back(std::move(run));
        }
        return result;
    });
}

Result BlockArchiveReader::Visit(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                                 const Visitor &visitor, const std::atomic<bool> &isCancelled)
{
    std::size_t damaged = 0;
    from = std::max<Timestamp>(from, 0);
    to = std::min(to, endOfTime);
    bool isWanted = true;
    do {
        std::vector<SampleRun> portion;
        const Result result = readPortion(signal, from, to, isCancelled, portion, damaged);
        if (!result)
            return result;
        for (std::size_t i = 0; isWanted && i < portion.size(); ++i) {
            if (isCancelled)
                return Result(Result::Cancelled);
            isWanted = visitor(portion[i]);
        }
    } while (isWanted && from <= to);
    if (damaged == 0)
        return Result();
    return Result(Result::StorageError, GetLocation() + ": " + std::to_string(damaged) +
                                            " blocks cannot be read, verify and repair it");
}

Result BlockArchiveReader::ReadBuckets(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                                       std::size_t count, std::vector<ArchiveBucket> &buckets,
                                       const std::atomic<bool> &isCancelled)
{
    return runFor(signal, [&](const StoredSignal &stored) {
        return m_reading.ReadBuckets(stored, std::max<Timestamp>(from, 0), std::min(to, endOfTime),
                                     count, buckets, isCancelled);
    });
}

Result BlockArchiveReader::verifySignals(ArchiveFindings &findings,
                                         const std::atomic<bool> &isCancelled)
{
    std::vector<StoredSignal> signals;
    Result result = readSignals(signals);
    for (const StoredSignal &signal : signals) {
        if (isCancelled)
            return Result(Result::Cancelled);
        // As it is now: the writer goes on.
        if (result)
            result = runFor(signal.key, [&](const StoredSignal &stored) {
                return BlockVerification(m_connection->Rows(), findings)
                    .CheckSignal(stored, isCancelled);
            });
    }
    return result;
}

Result BlockArchiveReader::Verify(ArchiveFindings &findings, const std::atomic<bool> &isCancelled)
{
    Result result = run([&] { return m_connection->Check(findings); });
    if (result)
        result = run([&] {
            return BlockVerification(m_connection->Rows(), findings).CheckLog(GetLocation());
        });
    if (result)
        result = verifySignals(findings, isCancelled);
    // What the database found wrong keeps it from being read further; rows may be gone by it.
    const bool isDamage = result == Result::StorageError || result == Result::NotFound;
    if (!isDamage || findings.empty())
        return result;
    findings.push_back({{}, 0, 0, GetLocation(), result.GetDetail()});
    return Result();
}

Result BlockArchiveReader::Repair(ArchiveFindings &findings, const std::atomic<bool> &isCancelled)
{
    std::vector<StoredSignal> signals;
    Result result = m_connection->Salvage(findings);
    if (result)
        result = readSignals(signals);
    for (const StoredSignal &signal : signals) {
        if (isCancelled)
            return Result(Result::Cancelled);
        ArchiveFindings wrong;
        if (result)
            result = run([&] {
                return BlockVerification(m_connection->Rows(), wrong)
                    .CheckSignal(signal, isCancelled);
            });
        if (!result || wrong.empty())
            continue;
        result = m_connection->Change([&](ArchiveTables &tables) {
            return BlockRepair(tables, findings).MendSignal(signal);
        });
    }
    if (result)
        result = m_connection->Change(
            [&](ArchiveTables &tables) { return BlockRepair(tables, findings).SettleRest(); });
    return result;
}

Result BlockArchiveReader::Backup(const std::string &to, const std::function<bool()> &step)
{
    return m_connection->Backup(to, step);
}

} // namespace Nodes
