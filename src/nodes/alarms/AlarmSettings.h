#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/AlarmTuning.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Timestamp.h"

#include <memory>
#include <string>

namespace Nodes {

class AlarmCondition;
class BasicAlarm;

/// Settings of one alarm, copied from its node.
struct NODES_EXPORT AlarmSettings
{
    /// What is named in `tuning` counts instead of the node's own.
    static AlarmSettings Of(const BasicAlarm &alarm, const AlarmTuning &tuning = {});

    NodeLink node;
    std::string source; ///< path of the alarm's node
    std::string text;
    int priority = 3;
    bool isAckRequired = true;
    Timestamp onDelay = 0; ///< microseconds
    Timestamp offDelay = 0;
    bool isLatched = false;
    Timestamp realarm = 0; ///< 0: never
    std::string firstUpGroup;
    std::string area;
    int limitRank = 0;          ///< 2 HH, 1 H, -1 L, -2 LL, else 0
    double minimum = 0;         ///< range of the signal
    double maximum = 0;         ///< not above the minimum: unknown
    int decimals = 0;           ///< of the signal
    std::string unit;           ///< of the signal
    std::string suppressReason; ///< of suppression by design: "по проекту: ..."
    std::shared_ptr<const AlarmCondition> condition; ///< to be cloned
};

} // namespace Nodes
