#include "nodes/archive/postgresql/PostgresBackup.h"

#include "nodes/archive/postgresql/PostgresSchema.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/storage/Digest.h"
#include "nodes/storage/postgresql/PostgresConnection.h"

#include <filesystem>
#include <utility>
#include <vector>

namespace Nodes {

namespace {

constexpr std::size_t packetSamples = 65536;
constexpr Timestamp endOfTime = (Timestamp(1) << 62) - 1; // nothing is kept behind it

/// Success when nothing is there yet.
Result checkFree(const std::string &to)
{
    std::error_code ignored;
    if (!PostgresLocation::IsOne(to))
        return std::filesystem::exists(to, ignored) ? Result(Result::Duplicate, to + ": exists")
                                                    : Result();
    PostgresConnection connection{PostgresLocation(to, "archive"), "station archive backup"};
    const Result opened = connection.Open(PostgresConnection::Mode::ReadOnly);
    if (!opened)
        return opened;
    const Result checked = PostgresSchema::Check(connection);
    if (checked == Result::NotFound)
        return Result();
    return checked
               ? Result(Result::Duplicate, connection.GetLocation().GetShown() + ": schema " +
                                               connection.GetLocation().GetSchema() + ": exists")
               : checked;
}

void remove(const std::string &to)
{
    std::error_code ignored;
    if (PostgresLocation::IsOne(to)) {
        PostgresConnection connection{PostgresLocation(to, "archive"), "station archive backup"};
        if (connection.Open(PostgresConnection::Mode::ReadWrite))
            (void)PostgresSchema::Drop(connection);
        return;
    }
    for (const char *companion : {"", "-wal", "-shm"})
        std::filesystem::remove(to + companion, ignored);
}

/// Samples [begin, end) of a run, if there are any.
void addPart(SamplePacket &packet, const StoredSignal &signal, const SampleRun &run,
             std::size_t begin, std::size_t end, bool isGenerated)
{
    if (begin >= end)
        return;
    SamplePacket::Part part;
    part.signal = signal.key;
    part.run.Append(run, begin, end);
    part.isGenerated = isGenerated;
    packet.parts.push_back(std::move(part));
}

/// What was made up stays told apart.
void addRun(SamplePacket &packet, const StoredSignal &signal, const SampleRun &run)
{
    const bool isAnyGenerated = signal.generatedTo != 0;
    const std::size_t from = isAnyGenerated ? run.LowerBound(signal.generatedFrom) : run.Size();
    const std::size_t to = isAnyGenerated ? run.LowerBound(signal.generatedTo + 1) : run.Size();
    addPart(packet, signal, run, 0, from, false);
    addPart(packet, signal, run, from, to, true);
    addPart(packet, signal, run, to, run.Size(), false);
}

} // namespace

Result PostgresBackup::Run(const std::string &to, const std::function<bool()> &step)
{
    Result result = checkFree(to);
    if (!result)
        return result;
    result = open(to);
    if (result)
        result = copy(step);
    if (m_target)
        m_target->Close();
    if (!result)
        remove(to);
    return result;
}

Result PostgresBackup::open(const std::string &to)
{
    m_nextKey = RandomStart();
    StoreOpening opening;
    const Result made = ArchiveStores().Make(to, m_target);
    return made ? m_target->Open(opening) : made;
}

Result PostgresBackup::copy(const std::function<bool()> &step)
{
    std::vector<StoredSignal> signals;
    Result result = m_from.ReadSignals(0, signals);
    for (std::size_t i = 0; result && i < signals.size(); ++i)
        result = copy(signals[i], step);
    RecordStore::Upkeep upkeep;
    upkeep.hasMore = true;
    while (result && upkeep.hasMore) {
        upkeep = RecordStore::Upkeep();
        result = m_target->Tend(upkeep);
    }
    return result ? m_target->Flush() : result;
}

Result PostgresBackup::copy(const StoredSignal &signal, const std::function<bool()> &step)
{
    Timestamp from = 0;
    bool hasMore = true;
    while (hasMore) {
        SamplePacket packet;
        std::size_t damaged = 0;
        while (hasMore && packet.Size() < packetSamples) {
            SampleRun run;
            const Result read = m_reading.ReadNext(signal, from, endOfTime, run, damaged);
            if (!read)
                return read;
            hasMore = !run.IsEmpty();
            if (hasMore)
                from = run.times.back() + 1;
            addRun(packet, signal, run);
        }
        if (step && !step())
            return Result(Result::Cancelled);
        const Result stored = store(packet);
        if (!stored)
            return stored;
    }
    return Result();
}

Result PostgresBackup::store(const SamplePacket &packet)
{
    if (packet.parts.empty())
        return Result();
    std::vector<std::uint64_t> numbers;
    return m_target->Write({{m_nextKey++, SamplePacket::Format().version, packet.Pack()}}, numbers);
}

} // namespace Nodes
