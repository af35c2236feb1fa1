#pragma once

#include <memory>

namespace Nodes {
class systemAlarming;
class systemCore;
} // namespace Nodes

namespace Widgets {

class ActionKinds;
class AlarmView;
class ProcessContext;

/// Where the parts that know nothing of each other meet: what the window manager needs from above
/// it is made here and handed to it as an interface. The only unit that knows both sides.
class Library
{
public:
    /// Has scenes and elements find their actions' way and that model (may be null), for as long as
    /// it lives.
    static std::unique_ptr<ProcessContext> makeContext(Nodes::systemCore *core);
    /// Every kind of action that the library can run.
    static const ActionKinds &actionKinds();
    /// For the alarms of that subsystem (may be null), which outlives the view. GUI thread.
    static std::unique_ptr<AlarmView> makeAlarmView(Nodes::systemAlarming *alarming);
};

} // namespace Widgets
