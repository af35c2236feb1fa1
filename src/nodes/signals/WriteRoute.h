#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

namespace Nodes {

class BasicSignal;
class SignalValue;

/// The way that writes take from a signal to its source. BasicSignal::WriteValue sends a value here
/// once rights, type and limits are checked, and journals the answer. GUI thread.
class NODES_EXPORT WriteRoute
{
public:
    virtual ~WriteRoute() = default;

    /// Hands the value on and answers at once: it never waits for a device or a network. Values go
    /// on in the order of the calls. Success: accepted.
    [[nodiscard]] virtual Result Write(BasicSignal &signal, const SignalValue &value) = 0;
};

} // namespace Nodes
