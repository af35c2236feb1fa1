#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionTrigger.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <QPoint>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QString;
class QWidget;

namespace Nodes {
class BasicWidget;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

class OwedActions;

/// Where scenes and elements send what an operator asks for, and what became of it. All they know
/// of whoever runs actions, writes and tells. GUI thread.
class WIDGETS_EXPORT ActionSink
{
public:
    virtual ~ActionSink();

    /// Trigger of what happens to `where` now, which may be embedded in a scene or null: whose
    /// doing it is, on which display, at that place of the desktop.
    virtual ActionTrigger triggerAt(const QWidget *where, const std::optional<QPoint> &point,
                                    ActionOrigin origin) const = 0;
    /// Queues the list, to be run once in order; an empty one does nothing. What the queue refuses
    /// it tells itself.
    virtual void push(const Nodes::NodeLinks &actions, const ActionTrigger &trigger) = 0;
    /// The list as it is now, queued as a release when the result is destroyed; may be null.
    virtual std::unique_ptr<OwedActions> owe(const Nodes::NodeLinks &actions,
                                             const ActionTrigger &trigger) = 0;
    /// Has what was entered into `element` written by that call into the model, which checks
    /// rights, type and limits; code and text of a refusal are for the operator. A sink of a
    /// preview may answer without writing.
    [[nodiscard]] virtual Nodes::Result write(const Nodes::BasicWidget &element,
                                              const std::function<Nodes::Result()> &write);

    /// Modal, under "Внимание", for what was entered; returns when it was answered, or at once
    /// when such a box is up already, which then tells this too.
    virtual void warn(const QString &text) = 0;
    /// The same beside the operator's work: nobody has to answer it.
    virtual void notify(const QString &text) = 0;
    /// A warning in the journal about a node; the same text about the same node only once.
    virtual void journalOnce(const Nodes::ConfigNode &node, const std::string &text) = 0;

    /// Whether a window or page shows that signal, alarm, device or element; see SourceJump.
    virtual bool canJump(const Nodes::NodeLink &source) const;
    /// Leads the operator there from what he touched; a refusal is told to him.
    virtual void jump(const Nodes::NodeLink &source, const QWidget *where);
    /// Destroys the nodes of an instance that nobody shows any more, when no action that was begun
    /// there needs them; by default at once.
    virtual void retire(const Nodes::NodeLink &instance);
    /// Brings up the alarm window.
    virtual void showAlarms();

    /// Queues the list for what happens to `where` now.
    void trigger(const Nodes::NodeLinks &actions, const QWidget *where,
                 const std::optional<QPoint> &point, ActionOrigin origin = ActionOrigin::Gesture);
};

} // namespace Widgets
