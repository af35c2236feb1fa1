#include "widgets/context/ActionSink.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

namespace Widgets {

ActionSink::~ActionSink() = default;

Nodes::Result ActionSink::write(const Nodes::BasicWidget &,
                                const std::function<Nodes::Result()> &write)
{
    return write();
}

bool ActionSink::canJump(const Nodes::NodeLink & /*source*/) const
{
    return false;
}

void ActionSink::jump(const Nodes::NodeLink & /*source*/, const QWidget * /*where*/) {}

void ActionSink::retire(const Nodes::NodeLink &instance)
{
    if (Nodes::NodesCollection *project = instance.GetNodesCollection())
        (void)project->TakeClone(instance);
}

void ActionSink::showAlarms() {}

void ActionSink::trigger(const Nodes::NodeLinks &actions, const QWidget *where,
                         const std::optional<QPoint> &point, ActionOrigin origin)
{
    if (!actions.empty())
        push(actions, triggerAt(where, point, origin));
}

} // namespace Widgets
