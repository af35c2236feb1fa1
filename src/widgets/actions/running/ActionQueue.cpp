#include "widgets/actions/running/ActionQueue.h"

#include "widgets/actions/qBasicAction.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/model/NodesArray.h"

#include <algorithm>

namespace Widgets {

ActionQueue::ActionQueue() = default;

ActionQueue::~ActionQueue()
{
    for (const Lane &lane : m_lanes) {
        qDeleteAll(lane.waiting);
        qDeleteAll(lane.handedOver);
    }
}

ActionQueue::Lane &ActionQueue::laneOf(const ActionTrigger &trigger)
{
    return m_lanes[trigger.isUrgent() ? 0 : 1];
}

bool ActionQueue::hasRoom(const ActionTrigger &trigger, int count) const
{
    const Lane &lane = const_cast<ActionQueue *>(this)->laneOf(trigger);
    return trigger.isRelease || lane.size + count <= MaximumQueued;
}

void ActionQueue::append(const QVector<qBasicAction *> &actions)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (qBasicAction *action : actions) {
        Lane &lane = laneOf(action->trigger());
        lane.waiting.push_back(action);
        ++lane.size;
    }
    m_size += actions.size();
}

bool ActionQueue::walk(const std::function<void(qBasicAction *)> &emitAction)
{
    QVector<qBasicAction *> finished;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (Lane &lane : m_lanes) {
            handOver(lane, emitAction);
            takeFinished(lane, finished);
        }
        m_size -= finished.size();
    }
    if (finished.isEmpty())
        return false;
    QVector<const Nodes::BasicAction *> nodes;
    for (const qBasicAction *action : qAsConst(finished)) {
        nodes.append(action->getNode());
        delete action;
    }
    const std::lock_guard<std::mutex> lock(m_copiesMutex);
    m_retired += nodes;
    return true;
}

void ActionQueue::handOver(Lane &lane, const std::function<void(qBasicAction *)> &emitAction)
{
    const auto isInFlight = [](const qBasicAction *action) {
        return action->GetState() != ActionFinished && !action->isWaiting();
    };
    auto room = MaximumInFlight -
                std::count_if(lane.handedOver.cbegin(), lane.handedOver.cend(), isInFlight);
    for (; !lane.waiting.empty() && room > 0; --room) {
        qBasicAction *action = lane.waiting.front();
        lane.waiting.pop_front();
        lane.handedOver.append(action);
        action->setState(ActionHandedOver);
        emitAction(action);
    }
}

void ActionQueue::takeFinished(Lane &lane, QVector<qBasicAction *> &finished)
{
    QVector<qBasicAction *> &actions = lane.handedOver;
    const auto firstFinished =
        std::stable_partition(actions.begin(), actions.end(), [](const qBasicAction *action) {
            return action->GetState() != ActionFinished;
        });
    lane.size -= int(actions.end() - firstFinished);
    std::copy(firstFinished, actions.end(), std::back_inserter(finished));
    actions.erase(firstFinished, actions.end());
}

int ActionQueue::drop(const std::function<bool(const qBasicAction &)> &isStale)
{
    int dropped = 0;
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (Lane &lane : m_lanes) {
        const auto kept = std::stable_partition(
            lane.waiting.begin(), lane.waiting.end(),
            [&isStale](const qBasicAction *action) { return !isStale(*action); });
        dropped += int(lane.waiting.end() - kept);
        std::for_each(kept, lane.waiting.end(), [&lane](qBasicAction *action) {
            action->setState(ActionFinished); // for the worker, which alone deletes
            lane.handedOver.append(action);
        });
        lane.waiting.erase(kept, lane.waiting.end());
    }
    return dropped;
}

Nodes::BasicAction *ActionQueue::copyNode(Nodes::BasicAction &node)
{
    auto copy = Nodes::NodesArray::CreateNodeCopy(node.GetNodeType(), &node);
    auto *action = dynamic_cast<Nodes::BasicAction *>(copy.get());
    if (!action)
        return nullptr;
    action->setCurrentDisplay(node.currentDisplay());
    const std::lock_guard<std::mutex> lock(m_copiesMutex);
    m_copies[action] = std::move(copy);
    return action;
}

bool ActionQueue::hasCopyBelow(const Nodes::ConfigNode &node)
{
    const std::lock_guard<std::mutex> lock(m_copiesMutex);
    return std::any_of(m_copies.cbegin(), m_copies.cend(), [&node](const auto &copy) {
        const Nodes::ConfigNode *above = copy.first->GetParent();
        while (above && above != &node)
            above = above->GetParent();
        return above != nullptr;
    });
}

void ActionQueue::freeRetiredCopies()
{
    std::vector<std::unique_ptr<Nodes::ConfigNode>> freed;
    const std::lock_guard<std::mutex> lock(m_copiesMutex);
    for (const Nodes::BasicAction *node : qAsConst(m_retired)) {
        const auto copy = m_copies.find(node);
        if (copy == m_copies.end())
            continue;
        freed.push_back(std::move(copy->second));
        m_copies.erase(copy);
    }
    m_retired.clear();
}

} // namespace Widgets
