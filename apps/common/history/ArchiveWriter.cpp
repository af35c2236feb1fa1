#include "apps/common/history/ArchiveWriter.h"

#include "apps/common/process/StopRequest.h"

#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/storage/Digest.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace Host {

namespace {

using Nodes::Result;

constexpr std::chrono::seconds patience(60); // for others who write
constexpr std::chrono::milliseconds pause(100);

/// That somebody else's transaction holds up this one; it did wait for a while.
bool isHeldUp(const Result &result)
{
    const std::string &detail = result.GetDetail();
    return detail.find("locked") != std::string::npos || detail.find("busy") != std::string::npos;
}

} // namespace

ArchiveWriter::ArchiveWriter() = default;

ArchiveWriter::~ArchiveWriter()
{
    if (m_store)
        m_store->Close();
}

Result ArchiveWriter::open(const std::string &location)
{
    m_key = Nodes::RandomStart();
    if (m_key == 0)
        return Result(Result::NotAvailable, "the system gives no random numbers");
    const Result made = Nodes::ArchiveStores().Make(location, m_store);
    return made ? patiently(&ArchiveWriter::openOnce) : made;
}

Result ArchiveWriter::openOnce()
{
    Nodes::StoreOpening opening;
    const Result result = m_store->Open(opening);
    if (!opening.setAside.empty())
        m_setAside = opening.setAside;
    return result;
}

Result ArchiveWriter::patiently(Result (ArchiveWriter::*step)())
{
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        const Result result = (this->*step)();
        if (result || !isHeldUp(result) || std::chrono::steady_clock::now() > end)
            return result;
        if (StopRequest::isMade())
            return Result(Result::Cancelled, "stopped");
        std::this_thread::sleep_for(pause);
    }
}

Result ArchiveWriter::write(const Nodes::ArchiveSignalKey &signal, const Nodes::SampleRun &run,
                            bool isGenerated)
{
    for (std::size_t begin = 0; begin < run.Size();) {
        const std::size_t end = std::min(run.Size(), begin + Portion);
        const Result result = add(signal, run, begin, end, isGenerated);
        if (!result)
            return result;
        begin = end;
    }
    return Result();
}

/// Small runs of several signals go into one transaction.
Result ArchiveWriter::add(const Nodes::ArchiveSignalKey &signal, const Nodes::SampleRun &run,
                          std::size_t begin, std::size_t end, bool isGenerated)
{
    if (m_packet.Size() + (end - begin) > Portion) {
        const Result result = commit();
        if (!result)
            return result;
    }
    Nodes::SamplePacket::Part &part = m_packet.parts.emplace_back();
    part.signal = signal;
    part.isGenerated = isGenerated;
    part.run.Append(run, begin, end);
    return Result();
}

Result ArchiveWriter::commit()
{
    if (m_packet.parts.empty())
        return Result();
    m_bytes = m_packet.Pack();
    ++m_key;
    const Result result = patiently(&ArchiveWriter::writeOnce);
    if (result)
        m_written += m_packet.Size();
    m_packet.parts.clear();
    return result;
}

Result ArchiveWriter::writeOnce()
{
    // A connection that was lost is made anew; the key keeps what was stored all the same from
    // being stored twice.
    if (!m_store->IsOpen()) {
        const Result opened = openOnce();
        if (!opened)
            return opened;
    }
    std::vector<std::uint64_t> numbers;
    const Nodes::Records records{{m_key, Nodes::SamplePacket::Format().version, m_bytes}};
    const Result result = m_store->Write(records, numbers);
    if (result)
        pack();
    return result;
}

Result ArchiveWriter::flushOnce()
{
    return m_store->Flush();
}

/// What does not come to pass is done by the next who writes.
void ArchiveWriter::pack()
{
    Nodes::RecordStore::Upkeep upkeep;
    for (bool hasMore = true; hasMore && !StopRequest::isMade(); hasMore = upkeep.hasMore) {
        upkeep = {};
        if (!m_store->Tend(upkeep))
            return;
    }
}

Result ArchiveWriter::finish()
{
    Result result = commit();
    if (result)
        result = patiently(&ArchiveWriter::flushOnce);
    if (result)
        pack();
    m_store->Close();
    return result;
}

} // namespace Host
