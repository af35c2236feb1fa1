#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

namespace Nodes {

class BasicSignal;
class SignalValue;

/// Who takes the writes to signals that live here: their driver, see BasicSignal::SetWriteTarget.
/// GUI thread.
class NODES_EXPORT WriteTarget
{
public:
    virtual ~WriteTarget() = default;

    /// Queues the checked value behind those before it, or answers at once why it cannot:
    /// NotConnected when the device is known to be lost.
    [[nodiscard]] virtual Result Write(const BasicSignal &signal, const SignalValue &value) = 0;
};

} // namespace Nodes
