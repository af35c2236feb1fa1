#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/actions/running/ActionTrigger.h"

#include "nodes/model/links/NodeLink.h"

#include <QVector>

#include <utility>

namespace Widgets {

class qBasicAction;

/// Actions that are copied now and queued later, whatever has become of their nodes, the user and
/// the room in the queue by then: what ends a press. GUI thread.
class WIDGETS_EXPORT OwedActions
{
public:
    OwedActions() = default;
    OwedActions(const Nodes::NodeLinks &actions, ActionTrigger trigger);
    OwedActions(OwedActions &&other) noexcept : m_actions(std::exchange(other.m_actions, {})) {}
    OwedActions &operator=(OwedActions &&other) noexcept;
    /// Queues what is still owed.
    ~OwedActions() { queue(); }

    /// Queues them, once.
    void queue();

private:
    QVector<qBasicAction *> m_actions;
};

} // namespace Widgets
