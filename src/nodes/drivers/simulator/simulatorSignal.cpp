#include "nodes/drivers/simulator/simulatorSignal.h"

#include "nodes/drivers/SignalSink.h"
#include "nodes/drivers/simulator/simulatorDriver.h"
#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo simulatorSignal::Kind()
{
    return KindBuilder::For<simulatorSignal>("simulatorSignal", "Simulated signal",
                                             "Моделируемый сигнал")
        .Inherit<BasicSignal>()
        .Property<&simulatorSignal::m_formula>(Prop::Formula, "Formula", "Формула")
        .Hint("formula")
        .Property<&simulatorSignal::m_initialValue>(Prop::Initial, "Initial value",
                                                    "Начальное значение")
        .Hint("value");
}

SignalValue simulatorSignal::GetInitialValue() const
{
    if (!m_initialValue.empty())
        return SignalValue(m_initialValue).ConvertedTo(GetValueType());
    const bool isText = GetValueType() == enSignalValueType::String;
    return isText ? SignalValue("") : SignalValue(0).ConvertedTo(GetValueType());
}

void simulatorSignal::Validate(ValidationResults &results) const
{
    BasicSignal::Validate(results);
    BasicDriver::ValidatePlace<simulatorDriver>(*this, "драйвер «Имитатор»", results);
}

} // namespace Nodes
