#pragma once

#include "widgets/WidgetsExport.h"

#include <QVector>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace Nodes {
class BasicAction;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

class qBasicAction;

/// Actions on their way from whoever pushed them to the GUI thread, with the node copies they run
/// on. Owns both. Safe on any thread, except as noted.
class WIDGETS_EXPORT ActionQueue
{
public:
    ActionQueue();
    /// Deletes what is left; GUI thread, after the worker has ended.
    ~ActionQueue();
    ActionQueue(const ActionQueue &) = delete;
    ActionQueue &operator=(const ActionQueue &) = delete;

    /// Actions handed over and not finished at any time: keeps the GUI thread responsive when
    /// thousands are pushed at once.
    static constexpr int MaximumInFlight = 128;

    /// Actions in the queue at any time; whoever pushes asks isFull first.
    static constexpr int MaximumQueued = 50000;

    bool isFull() const { return m_size.load(std::memory_order_relaxed) >= MaximumQueued; }
    /// Takes the actions over, all or in order between those of other threads.
    void append(const QVector<qBasicAction *> &actions);
    bool isEmpty() const { return m_size.load(std::memory_order_relaxed) == 0; }

    /// Calls `emitAction` for waiting actions, under the queue's lock, then deletes the finished
    /// ones. True when node copies are now to be freed. Worker thread.
    bool walk(const std::function<void(qBasicAction *)> &emitAction);

    /// Detached copy of an action node, owned here until its action is deleted and
    /// freeRetiredCopies was called; null when it cannot be copied.
    Nodes::BasicAction *copyNode(Nodes::BasicAction &node);
    /// Whether any of the copies stands below that node.
    bool hasCopyBelow(const Nodes::ConfigNode &node);
    /// Frees copies whose actions are gone. Node destructors look into the project's index:
    /// GUI thread only.
    void freeRetiredCopies();

private:
    void handOver(const std::function<void(qBasicAction *)> &emitAction);
    QVector<qBasicAction *> takeFinished();

    using Copies =
        std::unordered_map<const Nodes::BasicAction *, std::unique_ptr<Nodes::ConfigNode>>;

    std::mutex m_mutex; // guards the queue
    QVector<qBasicAction *> m_actions;
    std::atomic<int> m_size{0};
    std::mutex m_copiesMutex; // guards the copies; never held together with the other
    Copies m_copies;
    QVector<const Nodes::BasicAction *> m_retired;
};

} // namespace Widgets
