#include "nodes/alarms/alarmDeviation.h"

#include "nodes/alarms/engine/ThresholdCondition.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"

#include <cmath>
#include <optional>

namespace Nodes {

namespace {

class DeviationCondition : public ThresholdCondition
{
public:
    /// Without a set point the input's reference counts.
    DeviationCondition(const AlarmThreshold &threshold, int direction,
                       std::optional<double> setPoint)
        : ThresholdCondition(threshold), m_direction(direction), m_setPoint(setPoint)
    {
    }
    std::unique_ptr<AlarmCondition> Clone() const override
    {
        return std::make_unique<DeviationCondition>(*this);
    }
    AlarmVerdict Judge(const AlarmInput &input) override
    {
        const double reference = m_setPoint.value_or(input.reference.ToDouble());
        double deviation = input.value.ToDouble() - reference;
        const bool isKnown = isTrusted(input.value) && (m_setPoint || isTrusted(input.reference));
        if (!isKnown || std::isnan(deviation))
            return AlarmVerdict::Unknown;
        if (m_direction == alarmDeviation::Both)
            deviation = std::abs(deviation);
        else if (m_direction == alarmDeviation::Low)
            deviation = -deviation;
        return compare(deviation, m_threshold.limit, input.isActive);
    }

private:
    int m_direction;
    std::optional<double> m_setPoint;
};

} // namespace

KindInfo alarmDeviation::Kind()
{
    return KindBuilder::For<alarmDeviation>("alarmDeviation", "Deviation alarm",
                                            "Тревога по отклонению")
        .Inherit<BasicAlarm>()
        .Property<&alarmDeviation::m_limit>(Prop::Limit, "Limit", "Предел отклонения")
        .Range(0, 1e12)
        .Property<&alarmDeviation::m_deadband>(Prop::Deadband, "Deadband",
                                               "Зона нечувствительности")
        .Range(0, 1e12)
        .Property<&alarmDeviation::m_direction>(Prop::Direction, "Direction", "Направление")
        .Choice(Both, "both", "Вверх и вниз")
        .Choice(High, "high", "Вверх")
        .Choice(Low, "low", "Вниз")
        .Property<&alarmDeviation::m_reference>(Prop::Reference, "Compared with",
                                                "Сравнивать с сигналом")
        .Refers({NodeType::TypeSignal})
        .Property<&alarmDeviation::m_setPoint>(Prop::SetPoint, "Set point", "Уставка");
}

BasicSignal *alarmDeviation::GetReference() const
{
    return dynamic_cast<BasicSignal *>(m_reference.GetNode());
}

std::unique_ptr<AlarmCondition> alarmDeviation::MakeCondition() const
{
    const auto setPoint = m_reference.isEmpty() ? std::optional(m_setPoint) : std::nullopt;
    return std::make_unique<DeviationCondition>(AlarmThreshold{m_limit, m_deadband}, m_direction,
                                                setPoint);
}

void alarmDeviation::Validate(ValidationResults &results) const
{
    BasicAlarm::Validate(results);
    const std::string alarm = "Тревога «" + GetPath() + "»: ";
    if (m_limit <= 0)
        results.Add(GetNodeLink(), Result(this, Result::OutOfRange, "limit"),
                    alarm + "предел отклонения 0, тревога стоит всегда. Укажите предел больше 0.");
    if (!m_reference.isEmpty() && !GetReference())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "reference"),
                    alarm + "сигнала для сравнения нет, тревога не следит ни за чем. Укажите "
                            "сигнал или уставку.");
}

} // namespace Nodes
