#pragma once

#include "nodes/actions/BasicOpeningAction.h"

namespace Nodes {

/// Opens a window or brings one forward that is open already.
class NODES_EXPORT actionShowWindow : public BasicOpeningAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10003);

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;
};

} // namespace Nodes
