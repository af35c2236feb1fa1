#pragma once

#include "nodes/alarms/AlarmSettings.h"

#include <memory>

namespace Nodes {

class ValueCell;

/// An alarm of the station itself, which no project has to configure.
struct BuiltInAlarm
{
    AlarmSettings settings;
    std::shared_ptr<ValueCell> cell; ///< what its condition judges
};

} // namespace Nodes
