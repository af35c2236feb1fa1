#pragma once

#include "widgets/WidgetsExport.h"

class QObject;

namespace Nodes {
class systemCore;
}

namespace Widgets {

class ActionSink;

/// What every SceneContext of the process takes over unless it is told otherwise, for as long as
/// this object lives; the latest one counts. All it is given outlives it. GUI thread.
class WIDGETS_EXPORT ProcessContext
{
public:
    /// `core` may be null. `gestures` filters the events of what is live.
    ProcessContext(Nodes::systemCore *core, ActionSink &actions, QObject &gestures);
    ~ProcessContext();
    ProcessContext(const ProcessContext &) = delete;
    ProcessContext &operator=(const ProcessContext &) = delete;

    static Nodes::systemCore *model();
    /// One that drops what it gets, with a line in the log, while nobody is installed.
    static ActionSink &actions();
    static QObject *gestures();

private:
    Nodes::systemCore *m_core;
    ActionSink &m_actions;
    QObject &m_gestures;
};

} // namespace Widgets
