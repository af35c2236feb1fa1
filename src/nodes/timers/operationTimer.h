#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/Connection.h"

#include <functional>
#include <memory>

namespace Nodes {

/// Carries a list of actions and fires when its time elapses; whoever subscribed runs the actions.
/// Start and Stop: GUI thread, or a slot of the timer itself.
class NODES_EXPORT operationTimer : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeOperationTimer;
    struct Prop
    {
        static constexpr PropertyId<int> Mode{10101, "mode"};
        static constexpr PropertyId<int> Interval{10102, "interval"};
        static constexpr PropertyId<std::string> Time{10103, "time"};
        static constexpr PropertyId<bool> Autostart{10104, "autostart"};
        static constexpr PropertyId<NodeLinks> Actions{10105, "actions"};
    };

    enum Mode {
        ModePeriodic = 0, ///< every interval; missed periods are not made up
        ModeOnce = 1,     ///< one interval after Start, then the timer is stopped
        ModeDaily = 2     ///< every day at a local time
    };

    operationTimer();
    ~operationTimer() override;
    static KindInfo Kind();

    Mode GetMode() const { return Mode(m_mode); }
    /// The station starts the timer with itself; others wait for an action to start them.
    bool isAutostart() const { return m_isAutostart; }
    const NodeLinks &GetActions() const { return m_actions; }

    /// InvalidArgument when the time of day does not read as HH:MM:SS.
    Result Start() override;
    /// No slot runs any more when it returns.
    Result Stop() override;

    /// The slot runs on the thread that all timers share: it hands over, nothing else.
    Connection ConnectFired(std::function<void(operationTimer *)> slot);

    void Validate(ValidationResults &results) const override;

private:
    struct Run;

    void fire();

    int m_interval = 1000;
    int m_mode = ModePeriodic;
    std::string m_timeOfDay = "00:00:00";
    bool m_isAutostart = true;
    NodeLinks m_actions;
    std::unique_ptr<Run> m_run;
};

} // namespace Nodes
