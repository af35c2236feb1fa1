#pragma once

#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Result.h"

#include <memory>
#include <vector>

namespace Nodes {
class BasicDriver;
class NodesCollection;
} // namespace Nodes

namespace Editor {

/// A driver as it is configured at this moment, working in a project of its own: nothing of the
/// project that is edited runs or is told of it, and no journal, archive or right is there. For
/// drivers that read nothing but this machine. GUI thread; the driver's thread ends with it.
class DriverCopy
{
public:
    explicit DriverCopy(const Nodes::BasicDriver &driver);
    ~DriverCopy();

    /// Why it does not work; success while it does.
    const Nodes::Result &result() const { return m_result; }
    /// In the order of the driver's own GetSignals().
    const std::vector<Nodes::BasicSignal *> &signalNodes() const { return m_signals; }

private:
    Nodes::Result make(const Nodes::BasicDriver &driver);

    std::unique_ptr<Nodes::NodesCollection> m_project;
    Nodes::BasicDriver *m_driver = nullptr; ///< in m_project
    std::vector<Nodes::BasicSignal *> m_signals;
    Nodes::Result m_result;
};

} // namespace Editor
