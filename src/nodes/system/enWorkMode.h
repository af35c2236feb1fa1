#pragma once

namespace Nodes {

/// The mode the system runs in.
enum enWorkMode {
    WorkModeNone = 0,
    WorkModeEditing = 1, ///< configurator: nothing is live, everything can be changed
    WorkModeRuntime = 2  ///< operator station
};

} // namespace Nodes
