#include "nodes/archive/store/blocks/BlockArchiveReader.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/store/blocks/ArchiveConnection.h"
#include "nodes/archive/store/blocks/ArchiveTables.h"
#include "nodes/archive/store/blocks/BlockRepair.h"
#include "nodes/archive/store/blocks/BlockVerification.h"

#include <algorithm>

namespace Nodes {

namespace {

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

/// In a transaction for each portion: one that lasts would keep the log from being taken up.
Result BlockArchiveReader::Visit(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                                 const Visitor &visitor, const std::atomic<bool> &isCancelled)
{
    std::size_t damaged = 0;
    Timestamp next = std::max<Timestamp>(from, 0);
    const Timestamp last = std::min(to, endOfTime);
    SampleRun run;
    do {
        if (isCancelled)
            return Result(Result::Cancelled);
        const Result result = runFor(signal, [&](const StoredSignal &stored) {
            run.Clear();
            return next <= last ? m_reading.ReadNext(stored, next, last, run, damaged) : Result();
        });
        if (!result)
            return result;
        if (run.IsEmpty())
            break;
        next = run.times.back() + 1;
    } while (visitor(run));
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
    return result ? verifySignals(findings, isCancelled) : result;
}

Result BlockArchiveReader::Repair(ArchiveFindings &findings, const std::atomic<bool> &isCancelled)
{
    std::vector<StoredSignal> signals;
    Result result = readSignals(signals);
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
