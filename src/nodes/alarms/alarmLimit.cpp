#include "nodes/alarms/alarmLimit.h"

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/values/SignalValue.h"

#include <cmath>

namespace Nodes {

namespace {

class LimitCondition : public AlarmCondition
{
public:
    LimitCondition(bool isHigh, double limit, double deadband)
        : m_sign(isHigh ? 1 : -1), m_limit(limit * m_sign), m_deadband(deadband)
    {
    }
    AlarmVerdict Judge(const SignalValue &value, bool isActive) const override
    {
        const Quality quality = value.GetQuality();
        const double number = value.ToDouble() * m_sign;
        if (quality == Quality::Bad || quality == Quality::Stale || std::isnan(number))
            return AlarmVerdict::Unknown;
        const bool isBeyond = number >= m_limit || (isActive && number > m_limit - m_deadband);
        return isBeyond ? AlarmVerdict::Alarm : AlarmVerdict::Normal;
    }

private:
    double m_sign; // low limits are high limits of the negated value
    double m_limit;
    double m_deadband;
};

} // namespace

KindInfo alarmLimit::Kind()
{
    return KindBuilder::For<alarmLimit>("alarmLimit", "Limit alarm", "Тревога по пределу")
        .Inherit<BasicAlarm>()
        .Property<&alarmLimit::m_type>(Prop::Type, "Type", "Вид предела")
        .Choice(HighHigh, "HH", "Верхний аварийный")
        .Choice(High, "H", "Верхний предупредительный")
        .Choice(Low, "L", "Нижний предупредительный")
        .Choice(LowLow, "LL", "Нижний аварийный")
        .Property<&alarmLimit::m_limit>(Prop::Limit, "Limit", "Предел")
        .Property<&alarmLimit::m_deadband>(Prop::Deadband, "Deadband", "Зона нечувствительности")
        .Range(0, 1e12);
}

std::unique_ptr<AlarmCondition> alarmLimit::MakeCondition() const
{
    return std::make_unique<LimitCondition>(m_type == HighHigh || m_type == High, m_limit,
                                            m_deadband);
}

} // namespace Nodes
