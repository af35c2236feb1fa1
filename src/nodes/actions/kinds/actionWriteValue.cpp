#include "nodes/actions/kinds/actionWriteValue.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

KindInfo actionWriteValue::Kind()
{
    return KindBuilder::For<actionWriteValue>(NodeType::enNodeSubtype(0x10005), "actionWriteValue",
                                              "Write value", "Запись значения")
        .Property<&actionWriteValue::m_signal>(16020, "signal", "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&actionWriteValue::m_value>(16021, "value", "Value", "Значение");
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
