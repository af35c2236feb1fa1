#include "nodes/alarms/alarmQuality.h"

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/values/SignalValue.h"

namespace Nodes {

namespace {

class QualityCondition : public AlarmCondition
{
public:
    std::unique_ptr<AlarmCondition> Clone() const override
    {
        return std::make_unique<QualityCondition>(*this);
    }
    AlarmVerdict Judge(const AlarmInput &input) override
    {
        const SignalValue &value = input.value;
        // At a start alarms come before drivers: nothing is lost yet that never came.
        if (value.IsEmpty())
            return AlarmVerdict::Unknown;
        const Quality quality = value.GetQuality();
        const bool isLost = quality == Quality::Bad || quality == Quality::Stale;
        return isLost ? AlarmVerdict::Alarm : AlarmVerdict::Normal;
    }
};

} // namespace

KindInfo alarmQuality::Kind()
{
    return KindBuilder::For<alarmQuality>("alarmQuality", "Quality alarm",
                                          "Тревога по достоверности")
        .Inherit<BasicAlarm>();
}

std::unique_ptr<AlarmCondition> alarmQuality::MakeCondition() const
{
    return std::make_unique<QualityCondition>();
}

} // namespace Nodes
