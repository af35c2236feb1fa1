#include "nodes/alarms/alarmDiscrete.h"

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/values/NumberText.h"
#include "nodes/values/SignalValue.h"

namespace Nodes {

namespace {

/// Number of a text, "true" and "false" included: a bool signal may be configured as 1 or true.
std::optional<double> numberOf(const std::string &text)
{
    if (text == "true" || text == "false")
        return text == "true" ? 1 : 0;
    return ParseDouble(text);
}

class EqualCondition : public AlarmCondition
{
public:
    explicit EqualCondition(std::string text) : m_text(std::move(text)), m_number(numberOf(m_text))
    {
    }
    std::unique_ptr<AlarmCondition> Clone() const override
    {
        return std::make_unique<EqualCondition>(*this);
    }
    AlarmVerdict Judge(const AlarmInput &input) override
    {
        const SignalValue &value = input.value;
        const Quality quality = value.GetQuality();
        if (quality == Quality::Bad || quality == Quality::Stale)
            return AlarmVerdict::Unknown;
        return isEqual(value) ? AlarmVerdict::Alarm : AlarmVerdict::Normal;
    }

private:
    bool isEqual(const SignalValue &value) const
    {
        return m_number && value.IsNumber() ? value.ToDouble() == *m_number
                                            : value.ToString() == m_text;
    }

    std::string m_text;
    std::optional<double> m_number;
};

} // namespace

KindInfo alarmDiscrete::Kind()
{
    return KindBuilder::For<alarmDiscrete>("alarmDiscrete", "Discrete alarm", "Тревога по значению")
        .Inherit<BasicAlarm>()
        .Property<&alarmDiscrete::m_alarmValue>(Prop::Value, "Alarm value", "Значение тревоги")
        .Hint("value");
}

std::unique_ptr<AlarmCondition> alarmDiscrete::MakeCondition() const
{
    return std::make_unique<EqualCondition>(m_alarmValue);
}

} // namespace Nodes
