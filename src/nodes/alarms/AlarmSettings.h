#pragma once

#include "nodes/NodesExport.h"
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
    static AlarmSettings Of(const BasicAlarm &alarm);

    NodeLink node;
    std::string source; ///< path of the alarm's node
    std::string text;
    int priority = 3;
    bool isAckRequired = true;
    Timestamp onDelay = 0; ///< microseconds
    Timestamp offDelay = 0;
    std::shared_ptr<const AlarmCondition> condition;
};

} // namespace Nodes
