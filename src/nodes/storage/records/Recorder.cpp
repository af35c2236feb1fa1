#include "nodes/storage/records/Recorder.h"

#include "nodes/values/Clock.h"

#include <filesystem>

namespace Nodes {

Recorder::Recorder(RecordFormat format, const Limits &limits, RecordHooks hooks)
    : m_limits(limits),
      m_queue(limits.waiting, format.version),
      m_overflow(format),
      m_writer(m_queue, m_overflow, format, limits.transaction, std::move(hooks)),
      m_rescuer(m_queue, m_overflow, limits.hanging)
{
}

Recorder::~Recorder() = default;

void Recorder::SetFallbacks(std::vector<std::string> directories)
{
    const std::lock_guard lock(m_mutex);
    m_fallbacks = std::move(directories);
}

std::string Recorder::GetLocation() const
{
    const std::lock_guard lock(m_mutex);
    return m_location;
}

Result Recorder::Open(std::unique_ptr<RecordStore> store, const std::string &spillFile)
{
    std::vector<std::string> fallbacks;
    {
        const std::lock_guard lock(m_mutex);
        if (!m_location.empty())
            return Result(Result::Refused, m_location + ": is open");
        m_location = store->GetLocation();
        fallbacks = m_fallbacks;
    }
    // A directory that cannot be made shows when the file in it is opened.
    std::error_code ignored;
    const std::filesystem::path path(spillFile);
    std::filesystem::create_directories(path.parent_path(), ignored);
    RecordFindings findings;
    m_overflow.Open(fallbacks, path.filename().string(), findings);
    const std::shared_ptr<Recorder> self = shared_from_this();
    const Result started = m_writer.Start(std::move(store), spillFile, self, findings);
    if (m_overflow.HasPlace())
        m_rescuer.Start(self);
    return started;
}

void Recorder::Close()
{
    if (GetLocation().empty())
        return;
    const bool hasEnded = m_writer.Stop(m_limits.stopping);
    m_rescuer.Stop(m_limits.hanging);
    if (m_queue.Size() > 0 && m_overflow.HasPlace())
        m_rescuer.Empty(shared_from_this(), m_limits.hanging);
    else if (!hasEnded)
        m_queue.Abandon();
    const std::lock_guard lock(m_mutex);
    m_location.clear();
}

std::uint64_t Recorder::Append(std::string bytes)
{
    return m_queue.Push(std::move(bytes), m_writer.IsOwnThread());
}

Result Recorder::Flush()
{
    const std::string location = GetLocation();
    if (location.empty() || m_writer.IsOwnThread())
        return Result(Result::NotAvailable, "records: not open or called by their own thread");
    if (m_queue.WaitSettled(m_limits.flushing))
        return Result();
    return Result(Result::StorageError,
                  location + ": neither it nor its spill file can be written");
}

std::size_t Recorder::Waiting() const
{
    return m_queue.Size();
}

std::vector<std::string> Recorder::GetFallbackFiles() const
{
    return m_overflow.GetFiles();
}

StoreHealth Recorder::GetHealth() const
{
    StoreHealth health = m_writer.GetHealth();
    health.waiting = m_queue.Size();
    health.aside += m_overflow.Count();
    health.lost = m_queue.Lost();
    const std::chrono::milliseconds busy = m_queue.BusyFor();
    if (busy <= m_limits.hanging)
        return health;
    const Timestamp duration = Timestamp(busy.count()) * 1000;
    if (health.isWell() || duration > health.troubledFor) {
        health.troubledSince = Clock::Current().Now() - duration;
        health.troubledFor = duration;
    }
    health.trouble = "the disk has not answered for " + std::to_string(busy.count() / 1000) + " s";
    return health;
}

} // namespace Nodes
