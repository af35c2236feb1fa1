#pragma once

#include "nodes/actions/BasicPlacingAction.h"

namespace Nodes {

/// Hides an open window or shows it again.
class NODES_EXPORT actionToggleWindow : public BasicPlacingAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1000a);

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;
};

} // namespace Nodes
