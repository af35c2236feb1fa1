#pragma once

#include "nodes/alarms/AlarmTuning.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Timestamp.h"

#include <string>

namespace Nodes {

/// How an alarm deviates from the project. A copy.
struct TunedAlarm
{
    NodeLink alarm;
    AlarmTuning tuning;  ///< what counts instead
    AlarmTuning project; ///< what the project says, of the same numbers
    std::string by;
    Timestamp time = 0; ///< of the last change
};

} // namespace Nodes
