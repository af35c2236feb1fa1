#pragma once

#include "nodes/actions/BasicAction.h"

namespace Nodes {

/// Brings the alarm window up with the alarms as they stand, for an operator who closed it.
class NODES_EXPORT actionShowAlarms : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10012);

    static KindInfo Kind();
};

} // namespace Nodes
