#include "nodes/alarms/engine/AlarmFeed.h"

#include "nodes/alarms/engine/AlarmEngine.h"
#include "nodes/alarms/engine/AlarmFeedQueue.h"

namespace Nodes {

AlarmFeed::AlarmFeed(std::shared_ptr<AlarmEngine> engine, std::shared_ptr<AlarmFeedQueue> queue)
    : m_engine(std::move(engine)), m_queue(std::move(queue))
{
}

AlarmFeed::~AlarmFeed()
{
    m_engine->CloseFeed(m_queue);
}

AlarmFeed::Batch AlarmFeed::Take(std::size_t limit)
{
    return m_engine->Take(*m_queue, limit);
}

} // namespace Nodes
