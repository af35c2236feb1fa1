#include "nodes/alarms/alarmLimit.h"

#include "nodes/alarms/engine/ThresholdCondition.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

#include <cmath>

namespace Nodes {

namespace {

class LimitCondition : public ThresholdCondition
{
public:
    LimitCondition(bool isHigh, const AlarmThreshold &threshold)
        : ThresholdCondition(threshold), m_sign(isHigh ? 1 : -1)
    {
    }
    std::unique_ptr<AlarmCondition> Clone() const override
    {
        return std::make_unique<LimitCondition>(*this);
    }
    AlarmVerdict Judge(const AlarmInput &input) override
    {
        const double number = input.value.ToDouble() * m_sign;
        if (!isTrusted(input.value) || std::isnan(number))
            return AlarmVerdict::Unknown;
        return compare(number, m_threshold.limit * m_sign, input.isActive);
    }

private:
    double m_sign; // low limits are high limits of the negated value
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
    return std::make_unique<LimitCondition>(m_type == HighHigh || m_type == High,
                                            AlarmThreshold{m_limit, m_deadband});
}

/// Each pair out of order is found once, by its upper limit.
void alarmLimit::Validate(ValidationResults &results) const
{
    BasicAlarm::Validate(results);
    const BasicSignal *signal = GetSignal();
    if (!signal)
        return;
    for (const auto &child : signal->Children()) {
        const auto *lower = dynamic_cast<const alarmLimit *>(child.get());
        if (!lower || lower->m_type <= m_type || m_limit >= lower->m_limit)
            continue;
        results.Add(GetNodeLink(), Result(this, Result::OutOfRange, Prop::Limit.key),
                    "Тревога «" + GetPath() + "»: предел " + FormatExact(m_limit) +
                        " ниже предела «" + lower->GetName() + "» (" + FormatExact(lower->m_limit) +
                        "). Порядок пределов: HH, H, L, LL.");
    }
}

} // namespace Nodes
