#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

#include <vector>

namespace Nodes {

/// Starts a program of this machine: never through a shell, so arguments are passed as they are.
class NODES_EXPORT actionLaunchProcess : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10008);
    struct Prop
    {
        static constexpr PropertyId<std::string> Program{16050, "program"};
        static constexpr PropertyId<std::string> Arguments{16051, "arguments"};
        static constexpr PropertyId<std::string> Directory{16052, "directory"};
    };

    /// What to start; ${name} of the core's definitions is replaced.
    struct Command
    {
        std::string program;
        std::vector<std::string> arguments;
        std::string directory; ///< "" means the project's
    };

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;

    /// Checks PrivilegeLaunch (a refusal is journalled) and prepares the command.
    /// InvalidArgument without a program, NotFound names an unknown ${name}.
    [[nodiscard]] Result Prepare(Command &command) const;

private:
    std::string m_program;
    std::string m_arguments; // one a line
    std::string m_directory;
};

} // namespace Nodes
