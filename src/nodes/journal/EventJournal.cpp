#include "nodes/journal/EventJournal.h"

#include "nodes/journal/JournalReader.h"
#include "nodes/journal/JournalWriter.h"
#include "nodes/values/Clock.h"
#include "nodes/values/SlotList.h"

#include <cstdio>
#include <filesystem>
#include <mutex>

namespace Nodes {

namespace {

constexpr std::size_t queueCapacity = 100000;
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
    std::string File() const
    {
        const std::lock_guard lock(mutex);
        return file;
    }

    JournalQueue queue{queueCapacity};
    SlotList<const BasicEvent &> appended;
    JournalWriter writer{queue, [this](const BasicEvent &event) { appended(event); }};
    mutable std::mutex mutex; // of `file`, which names the journal from Open to Close
    std::string file;
};

EventJournal::EventJournal() : m_impl(std::make_unique<Impl>()) {}

EventJournal::~EventJournal()
{
    const bool wasOpen = !m_impl->File().empty();
    Close();
    const std::size_t lost = m_impl->queue.Size();
    if (wasOpen && lost > 0)
        std::fprintf(stderr, "journal: %zu entries could not be written and are lost\n", lost);
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
    std::filesystem::create_directories(std::filesystem::path(file).parent_path(), ignored);
    return m_impl->writer.Start(file);
}

void EventJournal::Close()
{
    m_impl->writer.Stop();
    const std::lock_guard lock(m_impl->mutex);
    m_impl->file.clear();
}

bool EventJournal::IsOpen() const
{
    return m_impl->writer.IsStoreOpen();
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
    return Result(Result::LimitExceeded, "journal: " + std::to_string(queueCapacity) +
                                             " entries wait and none can be written");
}

Result EventJournal::Flush()
{
    const std::string file = m_impl->File();
    if (file.empty() || m_impl->writer.IsOwnThread())
        return Result(Result::NotAvailable, "journal: not open or called by its own thread");
    if (m_impl->queue.WaitSettled())
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
