#pragma once

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/context/OwedActions.h"

#include "nodes/model/links/NodeLink.h"

#include <QPointer>
#include <QVector>

namespace Widgets {

/// Owed actions as objects of a dispatcher. Where that is gone when their time comes, they go with
/// it. GUI thread.
class CopiedActions : public OwedActions
{
public:
    CopiedActions(ActionDispatcher &dispatcher, const Nodes::NodeLinks &actions,
                  const ActionTrigger &trigger);
    ~CopiedActions() override;
    CopiedActions(const CopiedActions &) = delete;
    CopiedActions &operator=(const CopiedActions &) = delete;

private:
    QPointer<ActionDispatcher> m_dispatcher;
    QVector<qBasicAction *> m_actions;
};

} // namespace Widgets
