#pragma once

#include "nodes/signals/BasicSignal.h"

namespace Nodes {

/// Link state of the driver it stands below: true while its device answers, false while it is
/// lost, Bad while the driver does not run. Read only.
class NODES_EXPORT driverStatus : public BasicSignal
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x5005);

    driverStatus() { SetValueType(enSignalValueType::Bool); }
    static KindInfo Kind();
    SignalOrigin GetOrigin() const override { return SignalOrigin::Changes; }
    void Validate(ValidationResults &results) const override;

protected:
    Result DoWrite(const SignalValue &value) override;
};

} // namespace Nodes
