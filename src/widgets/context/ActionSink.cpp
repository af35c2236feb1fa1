#include "widgets/context/ActionSink.h"

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

void ActionSink::showAlarms() {}

void ActionSink::trigger(const Nodes::NodeLinks &actions, const QWidget *where,
                         const std::optional<QPoint> &point, ActionOrigin origin)
{
    if (!actions.empty())
        push(actions, triggerAt(where, point, origin));
}

} // namespace Widgets
