#include "nodes/timers/operationTimer.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/timers/TimerService.h"
#include "nodes/values/SlotList.h"

namespace Nodes {

struct operationTimer::Run
{
    SlotList<operationTimer *> fired;
    std::unique_ptr<TimerService::Run> timer;
};

operationTimer::operationTimer() : m_run(std::make_unique<Run>()) {}

operationTimer::~operationTimer()
{
    m_run->timer.reset();
}

KindInfo operationTimer::Kind()
{
    return KindBuilder::For<operationTimer>("operationTimer", "Operation timer", "Таймер операций")
        .Property<&operationTimer::m_mode>(Prop::Mode, "Mode", "Режим")
        .Choice(ModePeriodic, "periodic", "Периодически")
        .Choice(ModeOnce, "once", "Однократно")
        .Choice(ModeDaily, "daily", "Ежедневно")
        .Property<&operationTimer::m_interval>(Prop::Interval, "Interval, ms", "Интервал, мс")
        .Range(100, 86400000)
        .Property<&operationTimer::m_timeOfDay>(Prop::Time, "Time of day", "Время суток")
        .Hint("time")
        .Property<&operationTimer::m_isAutostart>(Prop::Autostart, "Start with the station",
                                                  "Запускать вместе со станцией")
        .Property<&operationTimer::m_actions>(Prop::Actions, "Actions", "Действия")
        .Refers({NodeType::TypeAction, NodeType::TypeArchiverAction});
}

Result operationTimer::Start()
{
    if (GetState() == NodeState::Running)
        return Result();
    TimerSchedule schedule = TimerSchedule::Periodic(Timestamp(m_interval) * 1000);
    if (m_mode == ModeOnce)
        schedule = TimerSchedule::Once(Timestamp(m_interval) * 1000);
    if (m_mode == ModeDaily) {
        const std::optional<int> time = TimerSchedule::ParseTimeOfDay(m_timeOfDay);
        if (!time)
            return Result(this, Result::InvalidArgument, "time = " + m_timeOfDay);
        schedule = TimerSchedule::Daily(*time);
    }
    SetState(NodeState::Running);
    m_run->timer.reset();
    m_run->timer = TimerService::Start(schedule, [this] { fire(); });
    return Result();
}

Result operationTimer::Stop()
{
    m_run->timer.reset();
    return ConfigNode::Stop();
}

void operationTimer::fire()
{
    // Before the slots run, so that one of them may start the timer again.
    if (m_mode == ModeOnce)
        SetState(NodeState::Stopped);
    m_run->fired(this);
}

Connection operationTimer::ConnectFired(std::function<void(operationTimer *)> slot)
{
    return m_run->fired.Connect(std::move(slot));
}

void operationTimer::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (m_mode == ModeDaily && !TimerSchedule::ParseTimeOfDay(m_timeOfDay))
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "time"),
                    "Таймер «" + GetPath() + "»: время «" + m_timeOfDay +
                        "» не читается. Укажите его как ЧЧ:ММ:СС.");
}

} // namespace Nodes
