#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/BasicEvent.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace Nodes {

class AlarmEngine;
class AlarmFeedQueue;

/// How all alarms of a station stand, for one reader who takes the changes in batches: of each
/// alarm only the latest state, read when it is taken. So what is taken is never older than what
/// was taken before, what waits is bounded by the number of alarms, and a flood costs no more than
/// a reader can show. What was overtaken is in the journal. See systemAlarming::OpenFeed.
///
///     m_feed = alarming.OpenFeed([this] { postToGuiThread(); }); // once until taken
///     ...
///     const AlarmFeed::Batch batch = m_feed->Take(1000);
///     if (batch.isAnew) forgetAll();
///     for (const BasicEvent &alarm : batch.alarms) show(alarm);  // or remove, when Normal
///     if (batch.hasMore) comeAgain();                            // nobody wakes for the rest
class NODES_EXPORT AlarmFeed
{
public:
    /// Called on a thread of the node model when there is something to take, once until it is
    /// taken. Must be short and must not take by itself.
    using Wake = std::function<void()>;

    struct Batch
    {
        /// What was taken before no longer counts, for the feed was just opened or alarming started
        /// or stopped: all alarms that are not Normal follow; none while it is stopped.
        bool isAnew = false;
        bool hasMore = false;
        /// Changes since the last batch, overtaken ones included.
        std::uint64_t events = 0;
        /// Each alarm once, as GetActiveAlarms has it; those that went Normal too. Not sorted.
        std::vector<BasicEvent> alarms;
    };

    AlarmFeed(std::shared_ptr<AlarmEngine> engine, std::shared_ptr<AlarmFeedQueue> queue);
    /// No wake runs or follows when it returns. It may outlive the alarm subsystem.
    ~AlarmFeed();
    AlarmFeed(const AlarmFeed &) = delete;
    AlarmFeed &operator=(const AlarmFeed &) = delete;

    /// The reader's thread. The first batch may be taken at once.
    Batch Take(std::size_t limit = SIZE_MAX);

private:
    std::shared_ptr<AlarmEngine> m_engine;
    std::shared_ptr<AlarmFeedQueue> m_queue;
};

} // namespace Nodes
