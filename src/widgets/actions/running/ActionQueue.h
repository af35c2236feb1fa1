#pragma once

#include "widgets/WidgetsExport.h"

#include <QVector>

#include <array>
#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace Nodes {
class BasicAction;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

struct ActionTrigger;
class qBasicAction;

/// Actions on their way from whoever pushed them to the GUI thread, with the node copies they run
/// on. Owns both. Two lanes: what is urgent overtakes the rest and has room of its own.
/// Safe on any thread, except as noted.
class WIDGETS_EXPORT ActionQueue
{
public:
    ActionQueue();
    /// Deletes what is left; GUI thread, after the worker has ended.
    ~ActionQueue();
    ActionQueue(const ActionQueue &) = delete;
    ActionQueue &operator=(const ActionQueue &) = delete;

    /// Actions of a lane handed over and not finished at any time: keeps the GUI thread responsive
    /// when thousands are pushed at once. Those that wait for the operator do not count.
    static constexpr int MaximumInFlight = 128;

    /// Actions in a lane at any time; whoever pushes asks hasRoom first.
    static constexpr int MaximumQueued = 50000;

    /// Whether so many more fit; what ends a press always does.
    bool hasRoom(const ActionTrigger &trigger, int count) const;
    /// Takes the actions over, all or in order between those of other threads.
    void append(const QVector<qBasicAction *> &actions);
    bool isEmpty() const { return m_size == 0; }
    int size() const { return m_size; }

    /// Calls `emitAction` for waiting actions, under the queue's lock, then deletes the finished
    /// ones. True when node copies are now to be freed. Worker thread.
    bool walk(const std::function<void(qBasicAction *)> &emitAction);
    /// Ends, without running them, those not handed over yet for which `isStale` holds; how many.
    int drop(const std::function<bool(const qBasicAction &)> &isStale);

    /// Detached copy of an action node, owned here until its action is deleted and
    /// freeRetiredCopies was called; null when it cannot be copied.
    Nodes::BasicAction *copyNode(Nodes::BasicAction &node);
    /// Whether any of the copies stands below that node.
    bool hasCopyBelow(const Nodes::ConfigNode &node);
    /// Frees copies whose actions are gone. Node destructors look into the project's index:
    /// GUI thread only.
    void freeRetiredCopies();

private:
    struct Lane
    {
        std::deque<qBasicAction *> waiting;
        QVector<qBasicAction *> handedOver; ///< finished ones too, until they are deleted
        std::atomic<int> size{0};           ///< of both
    };

    static void handOver(Lane &lane, const std::function<void(qBasicAction *)> &emitAction);
    static void takeFinished(Lane &lane, QVector<qBasicAction *> &finished);
    Lane &laneOf(const ActionTrigger &trigger);

    using Copies =
        std::unordered_map<const Nodes::BasicAction *, std::unique_ptr<Nodes::ConfigNode>>;

    std::mutex m_mutex;          // guards the lanes
    std::array<Lane, 2> m_lanes; // the urgent first
    std::atomic<int> m_size{0};  // of both lanes
    std::mutex m_copiesMutex;    // guards the copies; never held together with the other
    Copies m_copies;
    QVector<const Nodes::BasicAction *> m_retired;
};

} // namespace Widgets
