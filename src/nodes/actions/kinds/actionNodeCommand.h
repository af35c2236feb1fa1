#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/Timestamp.h"

namespace Nodes {

/// Gives a node a command: drivers and timers start and stop, alarms are acknowledged and shelved.
class NODES_EXPORT actionNodeCommand : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10007);
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Target{16060, "target"};
        static constexpr PropertyId<int> Command{16061, "command"};
        static constexpr PropertyId<int> Seconds{16062, "seconds"};
        static constexpr PropertyId<std::string> Comment{16063, "comment"};
    };

    enum enCommand {
        CommandStart = 0,
        CommandStop = 1,
        CommandReset = 2, ///< stop, then start
        CommandAcknowledge = 3,
        CommandShelve = 4,
        CommandUnshelve = 5,
        CommandOutOfService = 6,
        CommandInService = 7
    };

    actionNodeCommand();
    static KindInfo Kind();
    enCommand GetCommand() const { return enCommand(m_command); }
    void CollectDemands(AccessDemands &demands) const override;

    /// Gives the command on behalf of the current user and journals it. For alarm commands the
    /// target may be an alarm or whatever alarms stand below; acknowledged is what lists could show
    /// when this copy of the node was made. NotFound without a target or without
    /// an alarm the command concerns, WrongType when the target does not know the command,
    /// AccessDenied without PrivilegeCommand, PrivilegeAcknowledge or PrivilegeShelve. One alarm
    /// that refuses does not hold up the others. GUI thread.
    [[nodiscard]] Result Send() const;

private:
    Result steer(ConfigNode &target) const;
    Result commandAlarms(const ConfigNode &target) const;
    Result commandAlarm(const NodeLink &alarm) const;

    NodeLink m_target;
    int m_command = CommandAcknowledge;
    int m_seconds = 3600;
    std::string m_comment;
    const Timestamp m_made; // steady time; of the copy that runs the time of the gesture
};

} // namespace Nodes
