#pragma once

#include "nodes/alarms/AlarmSettings.h"

#include <memory>

namespace Nodes {

class ValueCell;

/// What the engine watches for one alarm: of a node, or of the station itself, which no project has
/// to configure.
struct AlarmInputs
{
    AlarmSettings settings;
    std::shared_ptr<ValueCell> cell;       ///< what its condition judges
    std::shared_ptr<ValueCell> reference;  ///< what it compares with; may be null
    std::shared_ptr<ValueCell> suppressor; ///< suppresses it while true; may be null
    bool isSuppressorInverted = false;
};

} // namespace Nodes
