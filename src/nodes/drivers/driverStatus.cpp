#include "nodes/drivers/driverStatus.h"

#include "nodes/drivers/BasicDriver.h"
#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo driverStatus::Kind()
{
    return KindBuilder::For<driverStatus>("driverStatus", "Driver status", "Состояние связи")
        .Inherit<BasicSignal>();
}

void driverStatus::Validate(ValidationResults &results) const
{
    BasicSignal::Validate(results);
    BasicDriver::ValidatePlace<BasicDriver>(*this, "драйвер", results);
}

Result driverStatus::DoWrite(const SignalValue &)
{
    return Result(this, Result::ReadOnly, GetName());
}

} // namespace Nodes
