#include "nodes/journal/JournalInquiry.h"

#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace Nodes {

/// What the thread works on; it outlives the asker until the disk has answered.
class JournalInquiry::Job
{
public:
    Job(std::unique_ptr<JournalReader> reader, JournalQuery query, Slot slot)
        : m_reader(std::move(reader)),
          m_query(std::move(query)),
          m_slot(std::move(slot)),
          m_left(m_query.limit)
    {
    }

    void Run()
    {
        bool isFirst = true;
        for (bool isLast = false; !isLast && awaitRoom(); isFirst = false) {
            JournalPage page = read(isFirst);
            isLast = page.isLast;
            deliver(page);
        }
    }
    void Continue()
    {
        {
            const std::lock_guard lock(m_mutex);
            ++m_room;
        }
        m_roomMade.notify_all();
    }
    void Cancel()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isCancelled = true;
        }
        m_roomMade.notify_all();
        m_reader->Cancel();
        const std::lock_guard running(m_delivering);
    }

private:
    static constexpr int roomAtFirst = 2; // pages

    bool awaitRoom()
    {
        std::unique_lock lock(m_mutex);
        m_roomMade.wait(lock, [this] { return m_isCancelled || m_room > 0; });
        --m_room;
        return !m_isCancelled;
    }

    // One entry more is asked for than is wanted: it tells whether the interval has more.
    JournalPage read(bool isFirst)
    {
        JournalPage page;
        page.isFirst = isFirst;
        const std::size_t wanted = std::min(m_left, isFirst ? FirstPage : NextPages);
        m_query.limit = wanted + 1;
        std::vector<BasicEvent> events;
        page.result = m_reader->Query(m_query, events);
        const bool hasMore = events.size() > wanted;
        if (hasMore)
            events.pop_back();
        m_left -= events.size();
        page.isLast = !page.result || !hasMore || m_left == 0;
        page.isCut = page.result.IsSuccess() && hasMore && m_left == 0;
        if (!events.empty())
            m_query.after = JournalKey::Of(events.back());
        page.events.reserve(events.size());
        for (BasicEvent &event : events)
            page.events.emplace_back(std::move(event));
        return page;
    }

    void deliver(const JournalPage &page)
    {
        const std::lock_guard delivering(m_delivering);
        {
            const std::lock_guard lock(m_mutex);
            if (m_isCancelled)
                return;
        }
        m_slot(page);
    }

    const std::unique_ptr<JournalReader> m_reader;
    JournalQuery m_query; // of the thread
    const Slot m_slot;
    std::size_t m_left; // of the thread
    std::mutex m_mutex;
    std::condition_variable m_roomMade;
    int m_room = roomAtFirst;          // guarded
    bool m_isCancelled = false;        // guarded
    std::recursive_mutex m_delivering; // held while the slot runs, which may cancel
};

JournalInquiry::~JournalInquiry()
{
    Cancel();
}

Result JournalInquiry::Ask(const EventJournal &journal, const JournalQuery &query, Slot slot)
{
    Cancel();
    if (query.end != 0 && query.end <= query.begin)
        return Result(Result::InvalidArgument, "journal: the interval ends before it begins");
    std::unique_ptr<JournalReader> reader = journal.OpenReader();
    if (!reader)
        return Result(Result::NotAvailable, "journal: not open");
    m_job = std::make_shared<Job>(std::move(reader), query, std::move(slot));
    // Not waited for: a disk that hangs must not keep whoever cancels.
    std::thread([job = m_job] { job->Run(); }).detach();
    return Result();
}

void JournalInquiry::Continue()
{
    if (m_job)
        m_job->Continue();
}

void JournalInquiry::Cancel()
{
    if (const std::shared_ptr<Job> job = std::exchange(m_job, nullptr))
        job->Cancel();
}

} // namespace Nodes
