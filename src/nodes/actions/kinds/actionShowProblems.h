#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/values/Result.h"

namespace Nodes {

/// Shows what is wrong with the project that runs. Needs PrivilegeConfigure for this node.
class NODES_EXPORT actionShowProblems : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10014);

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;

    /// AccessDenied (journalled) without the right.
    [[nodiscard]] Result Demand() const;
};

} // namespace Nodes
