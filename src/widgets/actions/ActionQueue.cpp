#include "widgets/actions/ActionQueue.h"

#include "widgets/actions/qBasicAction.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/model/NodesArray.h"

#include <algorithm>

namespace Widgets {

ActionQueue::ActionQueue() = default;

ActionQueue::~ActionQueue()
{
    qDeleteAll(m_actions);
}

void ActionQueue::append(const QVector<qBasicAction *> &actions)
{
    if (actions.isEmpty())
        return;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_actions += actions;
    m_size.store(m_actions.size(), std::memory_order_relaxed);
}

bool ActionQueue::walk(const std::function<void(qBasicAction *)> &emitAction)
{
    QVector<qBasicAction *> finished;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        handOver(emitAction);
        finished = takeFinished();
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

void ActionQueue::handOver(const std::function<void(qBasicAction *)> &emitAction)
{
    const auto isInFlight = [](const qBasicAction *action) {
        const enActionState state = action->GetState();
        return state == ActionHandedOver || state == ActionExecuting;
    };
    auto room = MaximumInFlight - std::count_if(m_actions.cbegin(), m_actions.cend(), isInFlight);
    for (auto action = m_actions.cbegin(); action != m_actions.cend() && room > 0; ++action) {
        if ((*action)->GetState() != ActionCreated)
            continue;
        (*action)->setState(ActionHandedOver);
        emitAction(*action);
        --room;
    }
}

QVector<qBasicAction *> ActionQueue::takeFinished()
{
    const auto firstFinished =
        std::stable_partition(m_actions.begin(), m_actions.end(), [](const qBasicAction *action) {
            return action->GetState() != ActionFinished;
        });
    QVector<qBasicAction *> finished;
    std::copy(firstFinished, m_actions.end(), std::back_inserter(finished));
    m_actions.erase(firstFinished, m_actions.end());
    m_size.store(m_actions.size(), std::memory_order_relaxed);
    return finished;
}

Nodes::BasicAction *ActionQueue::copyNode(Nodes::BasicAction &node)
{
    auto copy = Nodes::NodesArray::CreateNodeCopy(node.GetNodeType(), &node);
    auto *action = dynamic_cast<Nodes::BasicAction *>(copy.get());
    if (!action)
        return nullptr;
    action->setCurrentDisplay(node.currentDisplay());
    action->setTriggerPoint(node.takeTriggerPoint());
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
