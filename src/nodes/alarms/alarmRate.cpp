#include "nodes/alarms/alarmRate.h"

#include "nodes/alarms/engine/RateCondition.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

namespace {

constexpr Timestamp second = 1000000;

RateCondition::Direction directionOf(int direction)
{
    switch (direction) {
    case alarmRate::Rising:
        return RateCondition::Direction::Rising;
    case alarmRate::Falling:
        return RateCondition::Direction::Falling;
    default:
        return RateCondition::Direction::Both;
    }
}

} // namespace

KindInfo alarmRate::Kind()
{
    return KindBuilder::For<alarmRate>("alarmRate", "Rate alarm", "Тревога по скорости изменения")
        .Inherit<BasicAlarm>()
        .Property<&alarmRate::m_limit>(Prop::Limit, "Limit", "Предел скорости")
        .Range(0, 1e12)
        .Property<&alarmRate::m_deadband>(Prop::Deadband, "Deadband", "Зона нечувствительности")
        .Range(0, 1e12)
        .Property<&alarmRate::m_direction>(Prop::Direction, "Direction", "Направление")
        .Choice(Both, "both", "Рост и спад")
        .Choice(Rising, "rising", "Рост")
        .Choice(Falling, "falling", "Спад")
        .Property<&alarmRate::m_window>(Prop::Window, "Window, s", "Окно, с")
        .Range(1, 86400)
        .Property<&alarmRate::m_per>(Prop::Per, "Limit per", "Предел за")
        .Choice(Second, "second", "Секунду")
        .Choice(Minute, "minute", "Минуту");
}

std::unique_ptr<AlarmCondition> alarmRate::MakeCondition() const
{
    const RateCondition::Rate rate{directionOf(m_direction), m_window * second, m_per * second};
    return std::make_unique<RateCondition>(AlarmThreshold{m_limit, m_deadband}, rate);
}

void alarmRate::Validate(ValidationResults &results) const
{
    BasicAlarm::Validate(results);
    if (m_limit <= 0)
        results.Add(GetNodeLink(), Result(this, Result::OutOfRange, "limit"),
                    "Тревога «" + GetPath() +
                        "»: предел скорости 0, тревога стоит всегда. Укажите предел больше 0.");
}

} // namespace Nodes
