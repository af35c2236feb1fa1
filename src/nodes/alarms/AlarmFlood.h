#pragma once

#include "nodes/values/Timestamp.h"

namespace Nodes {

/// Whether more alarms come than an operator can follow. A copy.
struct AlarmFlood
{
    bool isFlood = false;
    int raisedInTenMinutes = 0; ///< shown to operators, each occurrence once
    Timestamp since = 0;        ///< wall time of the beginning; 0: there is none
};

} // namespace Nodes
