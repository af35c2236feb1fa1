#pragma once

#include "nodes/events/BasicEvent.h"
#include "nodes/model/ConfigNode.h"

#include <boost/signals2/connection.hpp>

#include <functional>
#include <memory>
#include <vector>

namespace Nodes {

/// Watches the configured alarms, keeps their ISA-18.2 states, journals every change with the
/// user, and announces it. Evaluation runs on threads of the node model; operations: any thread.
class NODES_EXPORT systemAlarming : public ConfigNode
{
public:
    systemAlarming();
    ~systemAlarming() override;
    static KindInfo Kind();

    Result Start() override;
    Result Stop() override;

    /// Alarms that are not Normal, latest change first: copies.
    std::vector<BasicEvent> GetActiveAlarms() const;
    /// Rights are checked here. NotFound when the alarm has nothing to acknowledge.
    [[nodiscard]] Result Acknowledge(const NodeLink &alarm, const std::string &comment = {});
    /// Hides the alarm for `seconds` (1 to 86400); it comes back by itself.
    [[nodiscard]] Result Shelve(const NodeLink &alarm, int seconds);
    [[nodiscard]] Result Unshelve(const NodeLink &alarm);
    [[nodiscard]] Result SetOutOfService(const NodeLink &alarm, bool out);
    [[nodiscard]] Result SetSuppressed(const NodeLink &alarm, bool suppressed);

    /// A new or changed alarm; the slot runs on a thread of the node model.
    boost::signals2::connection ConnectAlarm(std::function<void(const BasicEvent &)> slot);

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};

} // namespace Nodes
