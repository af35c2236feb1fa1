#include "nodes/signals/memorySignal.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

KindInfo memorySignal::Kind()
{
    return KindBuilder::For<memorySignal>("memorySignal", "Memory signal", "Внутренний сигнал")
        .Inherit<BasicSignal>()
        .Property<&memorySignal::m_initialValue>(Prop::Initial, "Initial value",
                                                 "Начальное значение")
        .Hint("value")
        .Property<&memorySignal::m_isJournalled>(Prop::Journal, "Writes are journalled",
                                                 "Записи попадают в журнал");
}

Result memorySignal::Start()
{
    if (!m_initialValue.empty() && GetValue().IsEmpty())
        GetCell()->Publish(Convert(m_initialValue));
    return BasicSignal::Start();
}

Result memorySignal::DoWrite(const SignalValue &value)
{
    SignalValue written = value;
    written.SetTimes(0, 0); // what was read elsewhere is written now
    GetCell()->Publish(std::move(written));
    return Result();
}

} // namespace Nodes
