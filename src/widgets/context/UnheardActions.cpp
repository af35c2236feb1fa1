#include "widgets/context/UnheardActions.h"

#include "widgets/context/OwedActions.h"

#include "nodes/model/ConfigNode.h"

#include <QLoggingCategory>
#include <QString>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(sceneLog, "station.scene")

} // namespace

ActionTrigger UnheardActions::triggerAt(const QWidget *, const std::optional<QPoint> &point,
                                        ActionOrigin origin) const
{
    ActionTrigger trigger;
    trigger.origin = trigger.root = origin;
    trigger.point = point;
    return trigger;
}

void UnheardActions::push(const Nodes::NodeLinks &actions, const ActionTrigger &)
{
    if (!actions.empty())
        qCWarning(sceneLog, "%zu actions dropped: there is no window manager", actions.size());
}

std::unique_ptr<OwedActions> UnheardActions::owe(const Nodes::NodeLinks &, const ActionTrigger &)
{
    return nullptr;
}

void UnheardActions::warn(const QString &text)
{
    qCWarning(sceneLog, "not shown: %s", qUtf8Printable(text));
}

void UnheardActions::notify(const QString &text)
{
    warn(text);
}

void UnheardActions::journalOnce(const Nodes::ConfigNode &node, const std::string &text)
{
    (void)node.StoreMessage(Nodes::LevelWarning, text, node.GetNodeLink());
}

} // namespace Widgets
