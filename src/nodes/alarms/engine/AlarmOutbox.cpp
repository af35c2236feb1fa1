#include "nodes/alarms/engine/AlarmOutbox.h"

#include "nodes/alarms/engine/AlarmFeedQueue.h"
#include "nodes/journal/EventJournal.h"

#include <algorithm>

namespace Nodes {

void AlarmOutbox::RemoveFeed(const std::shared_ptr<AlarmFeedQueue> &feed)
{
    m_feeds.erase(std::remove(m_feeds.begin(), m_feeds.end(), feed), m_feeds.end());
}

void AlarmOutbox::BeginFeedsAnew(std::size_t alarms)
{
    for (const auto &feed : m_feeds)
        feed->Reset(alarms);
}

void AlarmOutbox::AddChange(std::size_t alarm, BasicEvent event, bool isJournalled)
{
    m_records.push_back({std::move(event), isJournalled, true});
    for (const auto &feed : m_feeds)
        feed->Add(alarm);
}

AlarmOutbox::Load AlarmOutbox::Take()
{
    Load load;
    load.records.swap(m_records);
    m_underWay = load.records.size();
    for (const auto &feed : m_feeds) {
        if (feed->ClaimWake())
            load.feeds.push_back(feed);
    }
    return load;
}

void AlarmOutbox::Deliver(const Load &load)
{
    for (const auto &feed : load.feeds)
        feed->Wake();
    for (const Record &record : load.records) {
        if (record.isJournalled)
            Journal(record.event);
        if (record.isAnnounced) {
            m_announced(record.event);
            ++m_announcedCount;
        }
        --m_underWay;
    }
}

void AlarmOutbox::Journal(const BasicEvent &event)
{
    if (m_journal)
        ++(m_journal->Append(event) ? m_journalledCount : m_refusedCount);
}

void AlarmOutbox::Describe(AlarmHealth &health) const
{
    health.announced = m_announcedCount;
    health.journalled = m_journalledCount;
    health.refused = m_refusedCount;
    health.unannounced = m_records.size() + m_underWay;
}

} // namespace Nodes
