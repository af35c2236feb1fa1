#pragma once

#include "nodes/alarms/state/AlarmHealth.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/values/SlotList.h"

#include <atomic>
#include <memory>
#include <vector>

namespace Nodes {

class AlarmFeedQueue;
class EventJournal;

/// The way of the alarms' records to feeds, journal and subscribers. What is added and taken is
/// guarded by the engine's lock; delivered it is without.
class AlarmOutbox
{
public:
    struct Record
    {
        BasicEvent event;
        bool isJournalled;
        bool isAnnounced;
    };
    using FeedQueues = std::vector<std::shared_ptr<AlarmFeedQueue>>;
    /// What was taken and has to be delivered.
    struct Load
    {
        std::vector<Record> records;
        FeedQueues feeds; ///< those whose readers sleep
    };

    // Under the engine's lock.
    void AddFeed(const std::shared_ptr<AlarmFeedQueue> &feed) { m_feeds.push_back(feed); }
    void RemoveFeed(const std::shared_ptr<AlarmFeedQueue> &feed);
    /// There are so many alarms now, and nothing told of them yet.
    void BeginFeedsAnew(std::size_t alarms);
    /// A deed, for the journal alone.
    void AddDeed(BasicEvent event) { m_records.push_back({std::move(event), true, false}); }
    /// A change of the alarm at that place.
    void AddChange(std::size_t alarm, BasicEvent event, bool isJournalled);
    bool IsEmpty() const { return m_records.empty(); }
    Load Take();
    void Describe(AlarmHealth &health) const;

    // One thread at a time, without the lock.
    void Deliver(const Load &load);
    void SetJournal(EventJournal *journal) { m_journal = journal; } // may be null

    // Any thread.
    void Journal(const BasicEvent &event);
    Connection Connect(std::function<void(const BasicEvent &)> slot)
    {
        return m_announced.Connect(std::move(slot));
    }

private:
    std::vector<Record> m_records;
    FeedQueues m_feeds;
    EventJournal *m_journal = nullptr;
    SlotList<const BasicEvent &> m_announced;
    std::atomic<std::uint64_t> m_announcedCount{0};
    std::atomic<std::uint64_t> m_journalledCount{0};
    std::atomic<std::uint64_t> m_refusedCount{0};
    std::atomic<std::size_t> m_underWay{0}; // taken, not delivered yet
};

} // namespace Nodes
