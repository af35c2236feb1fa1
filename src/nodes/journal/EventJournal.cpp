#include "nodes/journal/EventJournal.h"

#include "nodes/journal/JournalReader.h"
#include "nodes/journal/JournalRescuer.h"
#include "nodes/journal/JournalWriter.h"
#include "nodes/values/Clock.h"
#include "nodes/values/SlotList.h"

#include <cstdio>
#include <filesystem>
#include <mutex>

namespace Nodes {

namespace {

constexpr std::size_t longestText = std::size_t(1) << 20; // so that a row fits a spilled record

/// Shortens to whole characters and marks the cut.
void clip(std::string &text)
{
    if (text.size() <= longestText)
        return;
    std::size_t end = longestText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    text.resize(end);
    text += "…";
}

} // namespace

struct EventJournal::Impl
{
    explicit Impl(const Limits &given) : limits(given), queue(given.waiting) {}
    std::string File() const
    {
        const std::lock_guard lock(mutex);
        return file;
    }

    const Limits limits;
    JournalQueue queue;
    JournalOverflow overflow;
    SlotList<const BasicEvent &> appended;
    JournalWriter writer{queue, overflow, [this](const BasicEvent &event) { appended(event); }};
    JournalRescuer rescuer{queue, overflow, limits.hanging};
    mutable std::mutex mutex; // of `file`, which names the journal from Open to Close
    std::string file;
    std::vector<std::string> fallbacks;
};

EventJournal::EventJournal() : EventJournal(Limits()) {}

EventJournal::EventJournal(const Limits &limits) : m_impl(std::make_shared<Impl>(limits)) {}

EventJournal::~EventJournal()
{
    const bool wasOpen = !m_impl->File().empty();
    Close();
    const std::size_t lost = m_impl->queue.Size();
    if (wasOpen && lost > 0)
        std::fprintf(stderr, "journal: %zu entries could not be written and are lost\n", lost);
}

void EventJournal::SetFallbacks(std::vector<std::string> directories)
{
    const std::lock_guard lock(m_impl->mutex);
    m_impl->fallbacks = std::move(directories);
}

Result EventJournal::Open(const std::string &file)
{
    if (file.empty())
        return Result(Result::InvalidArgument, "journal: no file name");
    {
        const std::lock_guard lock(m_impl->mutex);
        if (!m_impl->file.empty())
            return Result(Result::Refused, m_impl->file + ": the journal is open");
        m_impl->file = file;
    }
    // A directory that cannot be made shows when the file in it is opened.
    std::error_code ignored;
    const std::filesystem::path path(file);
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::vector<std::string> findings;
    m_impl->overflow.Open(m_impl->fallbacks, path.filename().string() + ".spill", findings);
    const Result started = m_impl->writer.Start(file, m_impl, findings);
    if (m_impl->overflow.HasPlace())
        m_impl->rescuer.Start(m_impl);
    return started;
}

void EventJournal::Close()
{
    if (m_impl->File().empty())
        return;
    const bool hasEnded = m_impl->writer.Stop(m_impl->limits.stopping);
    m_impl->rescuer.Stop(m_impl->limits.hanging);
    if (m_impl->queue.Size() > 0 && m_impl->overflow.HasPlace())
        m_impl->rescuer.Empty(m_impl, m_impl->limits.hanging);
    else if (!hasEnded)
        (void)m_impl->queue.Abandon();
    const std::lock_guard lock(m_impl->mutex);
    m_impl->file.clear();
}

bool EventJournal::IsOpen() const
{
    return m_impl->writer.IsStoreOpen();
}

StoreHealth EventJournal::GetHealth() const
{
    StoreHealth health = m_impl->writer.GetHealth();
    health.waiting = m_impl->queue.Size();
    health.aside += m_impl->overflow.Count();
    health.lost = m_impl->queue.Lost();
    const std::chrono::milliseconds busy = m_impl->queue.BusyFor();
    if (busy > m_impl->limits.hanging) {
        const Timestamp duration = Timestamp(busy.count()) * 1000;
        if (health.isWell() || duration > health.troubledFor) {
            health.troubledSince = Clock::Current().Now() - duration;
            health.troubledFor = duration;
        }
        health.trouble =
            "the disk has not answered for " + std::to_string(busy.count() / 1000) + " s";
    }
    return health;
}

std::vector<std::string> EventJournal::GetFallbackFiles() const
{
    return m_impl->overflow.GetFiles();
}

Result EventJournal::Append(BasicEvent event)
{
    if (event.time == 0)
        event.time = Clock::Current().Now();
    event.id = 0;
    for (std::string *text :
         {&event.text, &event.source, &event.user, &event.oldValue, &event.newValue})
        clip(*text);
    if (m_impl->queue.Push(MakeJournalRow(std::move(event)), m_impl->writer.IsOwnThread()))
        return Result();
    return Result(Result::LimitExceeded,
                  "journal: " + std::to_string(m_impl->limits.waiting) + " entries wait already");
}

Result EventJournal::Flush()
{
    const std::string file = m_impl->File();
    if (file.empty() || m_impl->writer.IsOwnThread())
        return Result(Result::NotAvailable, "journal: not open or called by its own thread");
    if (m_impl->queue.WaitSettled(m_impl->limits.flushing))
        return Result();
    return Result(Result::StorageError, file + ": neither it nor its spill file can be written");
}

Result EventJournal::Query(const JournalQuery &query, std::vector<BasicEvent> &events) const
{
    events.clear();
    const std::string file = m_impl->File();
    if (file.empty())
        return Result(Result::NotAvailable, "journal: not open");
    return JournalReader(file).Query(query, events);
}

Result EventJournal::Verify() const
{
    const std::string file = m_impl->File();
    if (file.empty())
        return Result(Result::NotAvailable, "journal: not open");
    return JournalReader(file).Verify();
}

Connection EventJournal::ConnectAppended(std::function<void(const BasicEvent &)> slot)
{
    return m_impl->appended.Connect(std::move(slot));
}

} // namespace Nodes
