#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionSink.h"

namespace Widgets {

/// Stands where nobody runs actions: what an operator asks for reaches the log, what he enters the
/// node. GUI thread.
class WIDGETS_EXPORT UnheardActions : public ActionSink
{
public:
    ActionTrigger triggerAt(const QWidget *where, const std::optional<QPoint> &point,
                            ActionOrigin origin) const override;
    void push(const Nodes::NodeLinks &actions, const ActionTrigger &trigger) override;
    std::unique_ptr<OwedActions> owe(const Nodes::NodeLinks &actions,
                                     const ActionTrigger &trigger) override;
    void warn(const QString &text) override;
    void notify(const QString &text) override;
    void journalOnce(const Nodes::ConfigNode &node, const std::string &text) override;
};

} // namespace Widgets
