#include "nodes/drivers/driverStatus.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo driverStatus::Kind()
{
    return KindBuilder::For<driverStatus>(NodeType::enNodeSubtype(0x5005), "driverStatus",
                                          "Driver status", "Состояние связи")
        .Inherit<BasicSignal>();
}

Result driverStatus::DoWrite(const SignalValue &)
{
    return Result(this, Result::ReadOnly, GetName());
}

} // namespace Nodes
