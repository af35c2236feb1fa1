#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/system/enWorkMode.h"

#include <memory>
#include <optional>

class QObject;

namespace Nodes {
class systemCore;
}

namespace Widgets {

class ActionSink;

/// What a scene and its elements know of the world: the work mode, where actions, writes and
/// refusals go, and the model. Whatever it is not told is the process's own, as it is at the time
/// of asking: a later change of the core's mode is seen. A value; a scene owns its context and
/// its elements share it, also those that outlive the scene for a moment. GUI thread.
class WIDGETS_EXPORT SceneContext
{
public:
    /// The context of what stands in no scene: all is the process's own. Never null.
    static const std::shared_ptr<const SceneContext> &process();

    /// None where there is neither a mode of its own nor a model.
    Nodes::enWorkMode mode() const;
    /// Elements are live, nothing is edited.
    bool isRuntime() const { return mode() == Nodes::WorkModeRuntime; }
    /// The configurator's mode, not merely "no run time".
    bool isEditor() const { return mode() == Nodes::WorkModeEditing; }
    /// A mode of its own, or that of the model again.
    void setMode(std::optional<Nodes::enWorkMode> mode) { m_mode = mode; }

    /// For looking at: run time whatever the mode is, and without a sink of its own nothing is
    /// queued, written or told.
    void setPreview(bool on) { m_isPreview = on; }
    bool isPreview() const { return m_isPreview; }

    /// Where nobody runs actions, lists and messages are dropped with a line in the log.
    ActionSink &actions() const;
    /// Somebody else's to run actions, write and tell; null: the process's again.
    void setActions(std::shared_ptr<ActionSink> actions);

    /// Null without one.
    Nodes::systemCore *model() const;
    /// Another one than the process's, which has to outlive the context; null: that again.
    void setModel(Nodes::systemCore *model) { m_model = model; }

    /// Event filter of what is live, which finds gestures out; null without one.
    QObject *gestures() const;

private:
    bool m_isPreview = false;
    std::optional<Nodes::enWorkMode> m_mode;
    std::shared_ptr<ActionSink> m_actions;
    Nodes::systemCore *m_model = nullptr;
};

using SceneContextPtr = std::shared_ptr<const SceneContext>;

} // namespace Widgets
