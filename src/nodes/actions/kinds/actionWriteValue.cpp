#include "nodes/actions/kinds/actionWriteValue.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

KindInfo actionWriteValue::Kind()
{
    return KindBuilder::For<actionWriteValue>("actionWriteValue", "Write value", "Запись значения")
        .Property<&actionWriteValue::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&actionWriteValue::m_value>(Prop::Value, "Value", "Значение")
        .Hint("value");
}

Result actionWriteValue::Write() const
{
    auto *signal = dynamic_cast<BasicSignal *>(m_signal.GetNode());
    return signal ? signal->WriteValue(m_value)
                  : Result(this, Result::NotFound, GetName() + ": signal");
}

void actionWriteValue::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeWrite, m_signal});
}

} // namespace Nodes
